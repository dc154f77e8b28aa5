// SPDX-License-Identifier: Apache-2.0
#include "tests/harness/field_editor.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "directory/ascii_case.h"
#include "tests/harness/field_deeds.h"

namespace pelora::testing {
namespace {

using Done = FieldEditor::Done;

constexpr std::string_view kAccount = "peloraAccount";
constexpr std::size_t kStatusColumn = 1;

bool CanBeUsed(const HeadlessDialog& dialog, ControlId control) {
  return dialog.IsShown(control) && dialog.IsEnabled(control);
}

/// The row of a list box with a text, in whatever case: a default entry stands in capitals.
std::optional<RowIndex> RowOf(const IListBox& list, std::string_view text) {
  for (RowIndex row = 0; row < list.Count(); ++row) {
    if (EqualsWithoutCase(list.Text(row), text)) return row;
  }
  return std::nullopt;
}

std::optional<RowIndex> EntryOf(const IListView& view, std::string_view entry) {
  for (RowIndex row = 0; row < view.RowCount(); ++row) {
    if (view.Text(row, 0) == entry) return row;
  }
  return std::nullopt;
}

Done YesIf(bool done) { return done ? Done::kYes : Done::kNo; }

Done DoneBy(UserAnswer answer) {
  switch (answer) {
    case UserAnswer::kDone:
      return Done::kYes;
    case UserAnswer::kHidden:
    case UserAnswer::kDisabled:
    case UserAnswer::kReadOnly:
      return Done::kNotEditable;
    default:
      return Done::kNo;
  }
}

/// What enables other fields comes before them.
bool Enables(const FieldRow& row) {
  return row.kind == FieldKind::kFlag || row.kind == FieldKind::kChoice;
}

}  // namespace

std::string ChosenPath(const EditedValues& wanted) { return "LDAP://" + wanted.chosen; }

std::string ChosenCommonName(const EditedValues& wanted) {
  const std::size_t begin = wanted.chosen.find('=') + 1;
  return wanted.chosen.substr(begin, wanted.chosen.find(',') - begin);
}

std::vector<FirstValue> FirstValues(std::span<const FieldRow> rows, std::size_t place,
                                    std::size_t objects) {
  std::vector<FirstValue> values;
  for (const FieldRow& row : rows) {
    FirstValue value{.attribute = std::string(row.attributes.front()), .values = {}};
    switch (row.kind) {
      case FieldKind::kFlag:
        // Of several, the account's box is ticked in some and will be cleared in all.
        value.values = {place % 2 == 1 || (row.name == kAccount && objects > 1) ? "1" : "0"};
        value.is_number = true;
        break;
      case FieldKind::kNumber:
        value.values = {std::to_string(100 + place)};
        value.is_number = true;
        break;
      case FieldKind::kText:
        value.values = {"first"};
        break;
      case FieldKind::kName:
      case FieldKind::kServer:
        value.values = {"CN=first,DC=x"};
        break;
      case FieldKind::kDefaultEntry:
        value.values = {"first@x.example"};
        break;
      case FieldKind::kList:
        value.values = {"other@x.example", "second@x.example"};
        break;
      case FieldKind::kNameList:
        value.values = {"CN=a,DC=x", "CN=b,DC=x"};
        break;
      case FieldKind::kChoice:
        break;
    }
    if (!value.values.empty()) values.push_back(std::move(value));
  }
  return values;
}

Done FieldEditor::Edit(HeadlessUser user, const FieldRow& row) {
  if (row.is_read_only) return Done::kNotEditable;
  static constexpr FieldDeeds<FieldEditor, Done> kDeeds{
      .flag = &FieldEditor::SetFlag,
      .text = &FieldEditor::Type,
      .object = &FieldEditor::Choose,
      .default_entry = &FieldEditor::MakeDefault,
      .texts = &FieldEditor::AddText,
      .names = &FieldEditor::AddName,
      .choice = &FieldEditor::SelectChoice,
      .choice_by_buttons = &FieldEditor::ClickChoice,
  };
  return (this->*kDeeds.Of(row))(user, row);
}

std::vector<std::string> FieldEditor::EditAll(HeadlessUser user, std::span<const FieldRow> rows) {
  std::vector<std::string> edited;
  for (const bool enabling : {true, false}) {
    for (const FieldRow& row : rows) {
      if (Enables(row) != enabling) continue;
      Done done = Edit(user, row);
      if (done == Done::kNo) done = Edit(user, row);
      if (done == Done::kYes) edited.push_back(row.name);
    }
  }
  return edited;
}

Done FieldEditor::SetFlag(HeadlessUser& user, const FieldRow& row) {
  const bool is_wanted = row.name == kAccount ? wanted_.account : wanted_.flag;
  const CheckState wanted = is_wanted ? CheckState::kChecked : CheckState::kUnchecked;
  // A box of three states comes round; one that is right already is clicked all the same.
  constexpr int kMostClicks = 3;
  for (int click = 0; click < kMostClicks; ++click) {
    const UserAnswer answer = user.Click(row.control);
    if (answer != UserAnswer::kDone) return DoneBy(answer);
    if (user.dialog().Check(row.control) == wanted) return Done::kYes;
  }
  return Done::kNo;
}

Done FieldEditor::Type(HeadlessUser& user, const FieldRow& row) {
  const std::string& text = row.kind == FieldKind::kNumber ? wanted_.number : wanted_.text;
  UserAnswer answer = user.EraseText(row.control);
  if (answer == UserAnswer::kDone) answer = user.TypeText(row.control, text);
  return DoneBy(answer);
}

UserAnswer FieldEditor::ClickChooser(HeadlessUser& user, ControlId button) {
  const std::string path = ChosenPath(wanted_);
  choosers_.Choose({path});
  choosers_.Find(ChosenObjects::AsObjectNames({path}));
  choosers_.Browse(kDialogOk, path);
  const UserAnswer answer = user.Click(button);
  // What was not taken is taken by nobody else.
  choosers_.Choose(static_cast<ChosenObjects*>(nullptr));
  choosers_.Find(nullptr);
  return answer;
}

Done FieldEditor::Choose(HeadlessUser& user, const FieldRow& row) {
  const UserAnswer answer = ClickChooser(user, row.choose);
  if (answer != UserAnswer::kDone) return DoneBy(answer);
  const bool is_server = row.kind == FieldKind::kServer;
  return YesIf(user.dialog().Text(row.control) ==
               (is_server ? ChosenCommonName(wanted_) : wanted_.chosen));
}

Done FieldEditor::MakeDefault(HeadlessUser& user, const FieldRow& row) {
  if (!user.dialog().IsShown(row.control)) return Done::kNotEditable;
  const IListBox& list = user.dialog().ListBox(row.control);
  const auto at = RowOf(list, wanted_.default_address);
  if (!at) return Done::kNotEditable;
  if (list.Text(*at) != wanted_.default_address) return Done::kYes;
  UserAnswer answer = user.SelectListRow(row.control, *at);
  if (answer == UserAnswer::kDone) answer = user.Click(row.make_default);
  return DoneBy(answer);
}

Done FieldEditor::AddText(HeadlessUser& user, const FieldRow& row) {
  const bool is_entry = !row.entry.empty();
  if (is_entry) {
    const auto at = EntryOf(user.dialog().ListView(row.control), row.entry);
    if (!at) return Done::kNotEditable;
    user.ClickListViewCell(row.control, *at, 0, false);
  } else if (!user.dialog().IsShown(row.control)) {
    return Done::kNotEditable;
  } else if (RowOf(user.dialog().ListBox(row.control), wanted_.address)) {
    return Done::kYes;
  }
  if (!CanBeUsed(user.dialog(), row.choose)) return Done::kNotEditable;
  bool is_played = false;
  dialogs_.PlayNext([&](HeadlessUser& typist) {
    is_played = true;
    const TextDialog& layout = row.typed_in;
    const bool is_there =
        layout.list != 0 && RowOf(typist.dialog().ListBox(layout.list), wanted_.address);
    if (!is_there) {
      typist.EraseText(layout.text);
      typist.TypeText(layout.text, wanted_.address);
      if (layout.add != 0) typist.Click(layout.add);
    }
    typist.Click(static_cast<ControlId>(kDialogOk));
  });
  const UserAnswer answer = user.Click(row.choose);
  if (answer != UserAnswer::kDone || !is_played) return Done::kNo;
  return is_entry ? Done::kYes
                  : YesIf(RowOf(user.dialog().ListBox(row.control), wanted_.address).has_value());
}

Done FieldEditor::AddName(HeadlessUser& user, const FieldRow& row) {
  if (!user.dialog().IsShown(row.control)) return Done::kNotEditable;
  if (RowOf(user.dialog().ListBox(row.control), wanted_.chosen)) return Done::kYes;
  const UserAnswer answer = ClickChooser(user, row.choose);
  if (answer != UserAnswer::kDone) return DoneBy(answer);
  return YesIf(RowOf(user.dialog().ListBox(row.control), wanted_.chosen).has_value());
}

Done FieldEditor::SelectChoice(HeadlessUser& user, const FieldRow& row) {
  const std::size_t wanted = std::min(wanted_.choice, row.choices.size() - 1);
  // The one that is selected already is no edit.
  if (user.dialog().ComboBox(row.control).Selection() == wanted) {
    user.SelectComboRow(row.control, wanted == 0 ? 1 : wanted - 1);
  }
  return DoneBy(user.SelectComboRow(row.control, wanted));
}

Done FieldEditor::ClickChoice(HeadlessUser& user, const FieldRow& row) {
  const std::size_t wanted = std::min(wanted_.choice, row.choices.size() - 1);
  const IListView& view = user.dialog().ListView(row.control);
  const auto at = EntryOf(view, row.entry);
  if (!at) return Done::kNotEditable;
  const auto is_so = [&] {
    return EqualsWithoutCase(view.Text(*at, kStatusColumn), row.choices[wanted]);
  };
  user.ClickListViewCell(row.control, *at, 0, false);
  if (is_so()) return Done::kYes;
  const UserAnswer answer = user.Click(row.choice_buttons.at(wanted));
  return answer == UserAnswer::kDone ? YesIf(is_so()) : DoneBy(answer);
}

}  // namespace pelora::testing
