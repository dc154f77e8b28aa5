// SPDX-License-Identifier: Apache-2.0
#include "tests/harness/random_editor.h"

#include <algorithm>
#include <utility>

#include "tests/harness/field_deeds.h"

namespace pelora::testing {
namespace {

constexpr std::size_t kStatusColumn = 1;
constexpr std::string_view kPathBegin = "LDAP://";

/// What of the addresses that are typed here tells the default one, which stands in capitals.
constexpr std::string_view kDefaultEnd = ".EXAMPLE";

}  // namespace

std::vector<std::string> RowsOf(const IListBox& list) {
  std::vector<std::string> rows;
  for (RowIndex row = 0; row < list.Count(); ++row) rows.push_back(list.Text(row));
  return rows;
}

bool SelectEntry(HeadlessUser& user, const FieldRow& row) {
  const IListView& view = user.dialog().ListView(row.control);
  for (RowIndex at = 0; at < view.RowCount(); ++at) {
    if (view.Text(at, 0) != row.entry) continue;
    return user.ClickListViewCell(row.control, at, 0, false) == UserAnswer::kDone;
  }
  return false;
}

std::string ShownIn(HeadlessDialog& page, const FieldRow& row) {
  if (!row.entry.empty()) {
    const IListView& view = page.ListView(row.control);
    for (RowIndex at = 0; at < view.RowCount(); ++at) {
      if (view.Text(at, 0) == row.entry) return view.Text(at, kStatusColumn);
    }
    return {};
  }
  std::string text;
  switch (row.kind) {
    case FieldKind::kFlag:
      return std::to_string(static_cast<int>(page.Check(row.control)));
    case FieldKind::kChoice:
      if (const auto chosen = page.ComboBox(row.control).Selection())
        return std::to_string(*chosen);
      return {};
    case FieldKind::kDefaultEntry:
    case FieldKind::kList:
    case FieldKind::kNameList:
      for (const std::string& one : RowsOf(page.ListBox(row.control))) text += one + "; ";
      return text;
    default:
      return page.Text(row.control);
  }
}

std::string MeantIn(HeadlessDialog& page, const FieldRow& row) {
  const bool is_list =
      row.entry.empty() && (row.kind == FieldKind::kDefaultEntry || row.kind == FieldKind::kList ||
                            row.kind == FieldKind::kNameList);
  if (row.kind == FieldKind::kFlag) {
    return page.Check(row.control) == CheckState::kChecked ? "yes" : "no";
  }
  if (row.kind == FieldKind::kNumber) {
    // One that cannot be edited is not always written.
    if (!page.IsEnabled(row.control)) return "not to be edited";
    return page.Text(row.control).empty() ? "0" : page.Text(row.control);
  }
  if (!is_list) return ShownIn(page, row);
  std::vector<std::string> rows = RowsOf(page.ListBox(row.control));
  std::ranges::sort(rows);
  std::string text;
  for (const std::string& one : rows) text += one + "; ";
  return text;
}

bool RandomEditor::Edit(HeadlessUser user, const FieldRow& row) {
  if (row.is_read_only || !user.dialog().IsShown(row.control)) return false;
  static constexpr FieldDeeds<RandomEditor, bool> kDeeds{
      .flag = &RandomEditor::Click,
      .text = &RandomEditor::Type,
      .object = &RandomEditor::Choose,
      .default_entry = &RandomEditor::ChangeList,
      .texts = &RandomEditor::ChangeList,
      .names = &RandomEditor::ChangeList,
      .choice = &RandomEditor::SelectChoice,
      .choice_by_buttons = &RandomEditor::ClickChoice,
  };
  return (this->*kDeeds.Of(row))(user, row);
}

bool RandomEditor::Click(HeadlessUser& user, const FieldRow& row) {
  return user.Click(row.control) == UserAnswer::kDone;
}

bool RandomEditor::Type(HeadlessUser& user, const FieldRow& row) {
  if (user.EraseText(row.control) != UserAnswer::kDone) return false;
  std::string text;
  if (Roll(4) != 0) text = std::to_string(Roll(100'000));
  if (row.kind == FieldKind::kText && !text.empty()) text = "größer als " + text;
  const std::vector<std::string>& odd = habits_.odd_numbers;
  if (row.kind == FieldKind::kNumber && !odd.empty() && Roll(4) == 0) text = odd[Roll(odd.size())];
  const UserAnswer answer = user.TypeText(row.control, text);
  return answer == UserAnswer::kDone || answer == UserAnswer::kCharactersRefused;
}

bool RandomEditor::Choose(HeadlessUser& user, const FieldRow& row) {
  const std::string path = habits_.chosen[Roll(habits_.chosen.size())];
  choosers_.Choose({path});
  choosers_.Find(ChosenObjects::AsObjectNames({path}));
  choosers_.Browse(kDialogOk, path);
  const bool is_done = user.Click(row.choose) == UserAnswer::kDone;
  choosers_.Choose(static_cast<ChosenObjects*>(nullptr));
  choosers_.Find(nullptr);
  handled_.insert(path.substr(kPathBegin.size()));
  return is_done;
}

bool RandomEditor::ChangeList(HeadlessUser& user, const FieldRow& row) {
  if (!row.entry.empty()) return SelectEntry(user, row) && AddText(user, row);
  const IListBox& list = user.dialog().ListBox(row.control);
  const std::vector<std::string> rows = RowsOf(list);
  const bool is_names = row.kind == FieldKind::kNameList;
  const std::size_t way = Roll(3);
  if (way == 0 || rows.empty()) {
    // A value twice in a list is none of a directory's.
    if (!is_names) return AddText(user, row);
    const bool is_any_there = std::ranges::any_of(habits_.chosen, [&rows](const std::string& path) {
      return std::ranges::find(rows, path.substr(kPathBegin.size())) != rows.end();
    });
    return !is_any_there && Choose(user, row);
  }
  const RowIndex at = Roll(rows.size());
  const bool is_default = !is_names && rows[at].ends_with(kDefaultEnd);
  const bool is_kept = !is_names && (is_default || rows.size() == 1);
  if (way == 1 && is_kept && !habits_.empties_lists) return false;
  // What was the default one is another's turn now.
  for (const std::string& one : rows) {
    if (one.ends_with(kDefaultEnd)) handled_.insert(one);
  }
  handled_.insert(rows[at]);
  // To whom the mark of the default one passes is the list's own affair.
  if (way == 1 && is_default) handled_.insert(rows.begin(), rows.end());
  user.SelectListRow(row.control, at);
  const ControlId button = way == 1 || is_names ? row.remove : row.make_default;
  return user.Click(button) == UserAnswer::kDone;
}

bool RandomEditor::AddText(HeadlessUser& user, const FieldRow& row) {
  if (!user.dialog().IsEnabled(row.choose)) return false;
  const std::string address = "a" + std::to_string(next_address_++) + "@x.example";
  handled_.insert(address);
  dialogs_.PlayNext([address, layout = row.typed_in](HeadlessUser& typist) {
    typist.EraseText(layout.text);
    typist.TypeText(layout.text, address);
    if (layout.add != 0) typist.Click(layout.add);
    typist.Click(static_cast<ControlId>(kDialogOk));
  });
  const bool is_done = user.Click(row.choose) == UserAnswer::kDone;
  dialogs_.ForgetScripts();
  return is_done;
}

bool RandomEditor::SelectChoice(HeadlessUser& user, const FieldRow& row) {
  const std::size_t choice = Roll(row.choices.size());
  return user.SelectComboRow(row.control, choice) == UserAnswer::kDone;
}

bool RandomEditor::ClickChoice(HeadlessUser& user, const FieldRow& row) {
  const std::size_t choice = Roll(row.choices.size());
  handled_.insert(std::string(row.entry));
  const ControlId button = row.choice_buttons.at(choice);
  return button != 0 && SelectEntry(user, row) && user.Click(button) == UserAnswer::kDone;
}

}  // namespace pelora::testing
