// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/pages/page_operator.h"

#include <optional>
#include <utility>

#include "hosts/ctl/ctl_error.h"
#include "hosts/ctl/fields/wish_maker.h"
#include "hosts/ctl/pages/what_enables.h"

namespace pelora::ctl {
namespace {

using Action = ListStep::Action;

[[noreturn]] void Refuse(const Wish& wish, const std::string& reason) {
  throw Refusal(wish.field->row.name + ": " + reason);
}

/// Erases what an edit control holds and types a text.
UserAnswer Replace(HeadlessUser& user, ControlId edit, std::string_view text) {
  const UserAnswer erased = user.EraseText(edit);
  return erased == UserAnswer::kDone ? user.TypeText(edit, text) : erased;
}

/// The row of a list box that shows a value: as it is, or in capitals, as the default one is shown.
std::optional<RowIndex> RowOf(IListBox& list, const ITextService& text, const std::string& value) {
  std::optional<RowIndex> found;
  const std::string capitals = text.UpperCase(value);
  for (RowIndex row = 0; row < list.Count(); ++row) {
    if (list.Text(row) == value) return row;
    if (!found && list.Text(row) == capitals) found = row;
  }
  return found;
}

/// Plays the dialog in which a whole list is typed; what went wrong is kept in `answer`.
UserAnswer PlayListDialog(HeadlessUser& user, const TextDialog& layout, const Wish& wish,
                          const ITextService& text) {
  for (const ListStep& step : wish.steps) {
    IListBox& list = user.dialog().ListBox(layout.list);
    if (step.action == Action::kAdd) {
      UserAnswer answer = Replace(user, layout.text, step.value);
      if (answer == UserAnswer::kDone) answer = user.Click(layout.add);
      if (answer != UserAnswer::kDone) return answer;
      // The dialog may take less of it than was typed.
      if (!RowOf(list, text, step.value)) return UserAnswer::kCharactersRefused;
      continue;
    }
    const std::optional<RowIndex> row = RowOf(list, text, step.value);
    UserAnswer answer = row ? user.SelectListRow(layout.list, *row) : UserAnswer::kNoSuchRow;
    if (answer == UserAnswer::kDone) answer = user.Click(layout.remove);
    if (answer != UserAnswer::kDone) return answer;
  }
  return user.Click(static_cast<ControlId>(kDialogOk));
}

}  // namespace

void PageOperator::Require(const Wish& wish, UserAnswer answer) {
  if (answer == UserAnswer::kDone) return;
  if (answer == UserAnswer::kDisabled) {
    const FieldRow& row = wish.field->row;
    const std::string enabling =
        WhatEnables(user_, fields_, row.choose == 0 ? row.control : row.choose);
    Refuse(wish, "it is disabled" + (enabling.empty() ? "" : "; set it together with " + enabling));
  }
  if (answer == UserAnswer::kCharactersRefused) Refuse(wish, "the field does not take this value");
  Refuse(wish, std::string(Describe(answer)));
}

bool PageOperator::IsEnabled(const Wish& wish) {
  const FieldRow& row = wish.field->row;
  // The button of a row of a list view is enabled once the row is selected.
  const bool is_button = row.choose != 0 && row.entry.empty();
  return user_.dialog().IsEnabled(is_button ? row.choose : row.control);
}

void PageOperator::Fulfil(const Wish& wish) {
  switch (wish.field->row.kind) {
    case FieldKind::kFlag:
      return SetFlag(wish);
    case FieldKind::kNumber:
    case FieldKind::kText:
      return Type(wish);
    case FieldKind::kName:
    case FieldKind::kServer:
      return ChooseObject(wish);
    case FieldKind::kChoice:
      return SelectChoice(wish);
    case FieldKind::kDefaultEntry:
    case FieldKind::kList:
    case FieldKind::kNameList:
      return ChangeList(wish);
  }
}

void PageOperator::SetFlag(const Wish& wish) {
  const CheckState wanted = wish.flag ? CheckState::kChecked : CheckState::kUnchecked;
  const ControlId box = wish.field->row.control;
  if (user_.dialog().Check(box) == wanted) return;
  Require(wish, user_.Click(box));
  if (user_.dialog().Check(box) != wanted) Refuse(wish, "the tab does not take this");
}

void PageOperator::Type(const Wish& wish) {
  Require(wish, Replace(user_, wish.field->row.control, wish.text));
}

void PageOperator::ChooseObject(const Wish& wish) {
  platform_.choosers.AnswerNext(ToGiven(wish.chosen));
  Require(wish, user_.Click(wish.field->row.choose));
  if (const ldap::StoreStatus failure = platform_.offered.TakeFailure(); !failure.Ok()) {
    throw DirectoryFailure(failure);
  }
  if (!platform_.choosers.refusal().empty()) Refuse(wish, platform_.choosers.refusal());
}

void PageOperator::SelectEntry(const Wish& wish) {
  const FieldRow& row = wish.field->row;
  if (row.entry.empty()) return;
  const IListView& view = user_.dialog().ListView(row.control);
  for (RowIndex index = 0; index < view.RowCount(); ++index) {
    if (view.Text(index, 0) != row.entry) continue;
    Require(wish, user_.ClickListViewCell(row.control, index, 0, false));
    return;
  }
  Refuse(wish, "the tab does not show it");
}

void PageOperator::SelectChoice(const Wish& wish) {
  const FieldRow& row = wish.field->row;
  if (row.choice_buttons.empty()) {
    Require(wish, user_.SelectComboRow(row.control, wish.choice));
    return;
  }
  const ControlId button = row.choice_buttons.at(wish.choice);
  if (button == 0) {
    Refuse(wish, ChoiceWord(row.choices.at(wish.choice)) + " cannot be chosen");
  }
  SelectEntry(wish);
  Require(wish, user_.Click(button));
}

void PageOperator::ChangeList(const Wish& wish) {
  const FieldRow& row = wish.field->row;
  if (wish.IsOnlyHidden()) {
    const bool is_enabled = user_.dialog().IsEnabled(row.choose == 0 ? row.control : row.choose);
    return Require(wish, is_enabled ? UserAnswer::kDone : UserAnswer::kDisabled);
  }
  if (row.typed_in.list != 0) return ChangeInDialog(wish);
  if (!wish.chosen.empty()) ChooseObject(wish);
  for (const ListStep& step : wish.steps) {
    switch (step.action) {
      case Action::kAdd:
        if (row.kind != FieldKind::kNameList) TypeIntoList(wish, step);
        break;
      case Action::kRemove:
        ClickSelected(wish, step, row.remove);
        break;
      case Action::kMakeDefault:
        ClickSelected(wish, step, row.make_default);
        break;
    }
  }
}

UserAnswer PageOperator::ClickAndPlay(ControlId button, HeadlessModalDialogs::Script script) {
  struct Forgetting {
    HeadlessModalDialogs& dialogs;
    ~Forgetting() { dialogs.ForgetScripts(); }
  } const forgetting{platform_.modal_dialogs};
  platform_.modal_dialogs.PlayNext(std::move(script));
  return user_.Click(button);
}

void PageOperator::TypeIntoList(const Wish& wish, const ListStep& step) {
  const ControlId edit = wish.field->row.typed_in.text;
  UserAnswer typed = UserAnswer::kNoSuchControl;
  const UserAnswer clicked = ClickAndPlay(wish.field->row.choose, [&](HeadlessUser& user) {
    typed = Replace(user, edit, step.value);
    if (typed == UserAnswer::kDone) typed = user.Click(static_cast<ControlId>(kDialogOk));
  });
  Require(wish, clicked);
  Require(wish, typed);
}

void PageOperator::ClickSelected(const Wish& wish, const ListStep& step, ControlId button) {
  const ControlId list = wish.field->row.control;
  const std::optional<RowIndex> row =
      RowOf(user_.dialog().ListBox(list), platform_.text, step.value);
  if (!row) Refuse(wish, "the tab does not show " + step.value);
  Require(wish, user_.SelectListRow(list, *row));
  Require(wish, user_.Click(button));
}

void PageOperator::ChangeInDialog(const Wish& wish) {
  SelectEntry(wish);
  UserAnswer played = UserAnswer::kNoSuchControl;
  const UserAnswer clicked = ClickAndPlay(wish.field->row.choose, [&](HeadlessUser& user) {
    played = PlayListDialog(user, wish.field->row.typed_in, wish, platform_.text);
  });
  Require(wish, clicked);
  Require(wish, played);
}

}  // namespace pelora::ctl
