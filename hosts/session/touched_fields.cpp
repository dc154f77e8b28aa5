// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/touched_fields.h"

#include <algorithm>
#include <array>
#include <utility>

#include "directory/ascii_case.h"

namespace pelora::session {
namespace {

std::string ListText(const IListBox& list) {
  std::string text;
  for (RowIndex row = 0; row < list.Count(); ++row) text += list.Text(row) + '\n';
  return text;
}

std::string EntryText(const IListView& list, std::string_view entry) {
  constexpr std::size_t kName = 0;
  constexpr std::size_t kStatus = 1;
  for (RowIndex row = 0; row < list.RowCount(); ++row) {
    if (list.Text(row, kName) == entry) return list.Text(row, kStatus);
  }
  return {};
}

std::string ChosenText(const IComboBox& list) {
  const std::optional<RowIndex> chosen = list.Selection();
  return chosen ? std::to_string(*chosen) : std::string();
}

std::string ShownBy(const FieldRow& row, IDialog& dialog) {
  if (!row.entry.empty()) return EntryText(dialog.ListView(row.control), row.entry);
  switch (row.kind) {
    case FieldKind::kFlag:
      return std::to_string(static_cast<int>(dialog.Check(row.control)));
    case FieldKind::kChoice:
      return ChosenText(dialog.ComboBox(row.control));
    case FieldKind::kDefaultEntry:
    case FieldKind::kList:
    case FieldKind::kNameList:
      return ListText(dialog.ListBox(row.control));
    default:
      return dialog.Text(row.control);
  }
}

bool Names(const auto& attributes, std::string_view attribute) {
  return std::ranges::any_of(attributes, [attribute](std::string_view name) {
    return EqualsWithoutCase(name, attribute);
  });
}

/// Whether a control is one of those by which the field is edited.
bool Edits(const FieldRow& row, ControlId control) {
  const std::array<ControlId, 4> own = {row.control, row.choose, row.remove, row.make_default};
  return (control != 0 && std::ranges::find(own, control) != own.end()) ||
         std::ranges::find(row.choice_buttons, control) != row.choice_buttons.end();
}

}  // namespace

TouchedFields::Shows TouchedFields::HowShown(const FieldRow& row) {
  if (!row.entry.empty()) {
    return row.kind == FieldKind::kChoice ? Shows::kEntry : Shows::kEntryInPart;
  }
  switch (row.kind) {
    case FieldKind::kDefaultEntry:
    case FieldKind::kList:
    case FieldKind::kNameList:
      return Shows::kList;
    case FieldKind::kChoice:
      return row.choice_buttons.empty() ? Shows::kWholeValue : Shows::kLess;
    default:
      return Shows::kWholeValue;
  }
}

bool TouchedFields::IsSeenWhole(Shows shows) {
  return shows != Shows::kLess && shows != Shows::kEntryInPart;
}

void TouchedFields::Watch(std::vector<FieldRow> fields) {
  for (FieldRow& row : fields) {
    const Shows shows = HowShown(row);
    fields_.push_back({.row = std::move(row), .shows = shows});
  }
}

void TouchedFields::Settle(IDialog& dialog) {
  has_other_edits_ = false;
  for (Field& field : fields_) Settle(field, dialog);
}

void TouchedFields::Settle(ControlId control, IDialog& dialog) {
  for (Field& field : fields_) {
    if (field.row.control == control) Settle(field, dialog);
  }
}

void TouchedFields::Settle(Field& field, IDialog& dialog) {
  if (field.shows != Shows::kLess) field.read = ShownBy(field.row, dialog);
  field.shown = field.read;
  if (field.row.kind == FieldKind::kFlag) field.read_style = dialog.Style(field.row.control);
  if (field.row.take_down) field.put_back = field.row.take_down();
  field.was_reported = field.is_removed = field.is_unwritten = field.is_chosen = false;
}

void TouchedFields::LookBeforeApply(IDialog& dialog) {
  Look(dialog);
  for (Field& field : fields_) field.before_apply = field.shown;
}

void TouchedFields::SettleFilled(IDialog& dialog) {
  for (Field& field : fields_) {
    if (field.shows == Shows::kLess || field.IsChanged()) continue;
    std::string now = ShownBy(field.row, dialog);
    if (now == field.read) continue;
    field.read = now;
    field.shown = std::move(now);
    if (field.row.kind == FieldKind::kFlag) field.read_style = dialog.Style(field.row.control);
    if (field.row.take_down) field.put_back = field.row.take_down();
  }
}

void TouchedFields::SettleIfRefilled(IDialog& dialog) {
  const bool is_refilled = std::ranges::any_of(fields_, [&dialog](const Field& field) {
    return field.shows != Shows::kLess && ShownBy(field.row, dialog) != field.before_apply;
  });
  if (is_refilled) Settle(dialog);
}

void TouchedFields::Touch(ControlId control) {
  bool is_accounted_for = false;
  for (Field& field : fields_) {
    if (!Edits(field.row, control)) continue;
    field.was_reported = true;
    field.is_edited = field.is_edited || !IsSeenWhole(field.shows);
    is_accounted_for = is_accounted_for || IsSeenWhole(field.shows);
  }
  if (is_accounted_for) return;
  // A button of which no row tells: it may edit any list, and whatever is not seen whole.
  for (Field& field : fields_) {
    field.was_reported = field.was_reported || field.shows == Shows::kList;
    field.is_edited = field.is_edited || !IsSeenWhole(field.shows);
    has_other_edits_ = has_other_edits_ || !IsSeenWhole(field.shows);
  }
  has_other_edits_ = has_other_edits_ || fields_.empty();
}

void TouchedFields::Look(IDialog& dialog) {
  for (Field& field : fields_) {
    if (field.shows == Shows::kLess) continue;
    if (field.shows == Shows::kList && !field.was_reported) continue;
    field.was_reported = false;
    std::string now = ShownBy(field.row, dialog);
    field.is_edited = field.is_edited || now != field.shown;
    field.shown = std::move(now);
    // Typed over, it is as any other edit.
    field.is_removed = field.is_removed && field.shown.empty();
  }
}

std::vector<std::size_t> TouchedFields::TakeEdited() {
  std::vector<std::size_t> edited;
  for (std::size_t field = 0; field < fields_.size(); ++field) {
    if (std::exchange(fields_[field].is_edited, false)) edited.push_back(field);
  }
  return edited;
}

void TouchedFields::KeepUnwritten() {
  for (Field& field : fields_) field.is_unwritten = field.IsChanged();
}

void TouchedFields::TellChanged(IDialogController& page) const {
  using enum ControlNotification;
  for (const Field& field : fields_) {
    if (field.shows != Shows::kWholeValue || field.row.is_read_only || !field.IsChanged()) continue;
    const FieldKind kind = field.row.kind;
    (void)page.OnCommand(field.row.control, kind == FieldKind::kFlag     ? kClicked
                                            : kind == FieldKind::kChoice ? kSelectionChange
                                                                         : kEditChange);
  }
}

bool TouchedFields::IsChanged(std::size_t field) const { return fields_.at(field).IsChanged(); }

bool TouchedFields::WasUndecided(std::size_t field) const {
  const Field& known = fields_.at(field);
  return known.row.kind == FieldKind::kFlag &&
         known.read == std::to_string(static_cast<int>(CheckState::kIndeterminate));
}

bool TouchedFields::HasChangedFields() const {
  return std::ranges::any_of(fields_, &Field::IsChanged);
}

bool TouchedFields::IsWanted(std::string_view attribute) const {
  bool is_unchanged = false;
  for (const Field& field : fields_) {
    if (!Names(field.row.attributes, attribute)) continue;
    const bool is_staged_when_edited =
        field.shows != Shows::kWholeValue && field.shows != Shows::kEntryInPart;
    if (is_staged_when_edited || field.IsChanged()) return true;
    // Such a page stages it ever after, once it was edited.
    if (field.shows == Shows::kEntryInPart && has_other_edits_) return true;
    is_unchanged = true;
  }
  return !is_unchanged;
}

bool TouchedFields::CanSetBack(std::size_t field) const {
  const Field& known = fields_.at(field);
  if (known.row.is_read_only) return false;
  if (known.shows == Shows::kWholeValue) return true;
  return known.put_back && (known.row.entry.empty() || !known.is_unwritten);
}

bool TouchedFields::CanRemove(std::size_t field) const {
  const Field& known = fields_.at(field);
  return known.shows == Shows::kWholeValue && !known.row.is_read_only;
}

void TouchedFields::PutBack(const Field& known, IDialog& dialog) {
  known.put_back();
  for (Field& other : fields_) {
    // A list may be several fields at once, and goes back as a whole.
    if (other.row.control != known.row.control || other.row.entry != known.row.entry) continue;
    other.shown = ShownBy(other.row, dialog);
    other.was_reported = other.is_chosen = false;
  }
}

void TouchedFields::SetBack(std::size_t field, IDialog& dialog, IDialogController& page) {
  Field& known = fields_.at(field);
  if (!CanSetBack(field)) return;
  if (known.shows != Shows::kWholeValue) return PutBack(known, dialog);
  known.is_removed = false;
  const ControlId control = known.row.control;
  switch (known.row.kind) {
    case FieldKind::kFlag:
      dialog.SetStyle(control, known.read_style);
      dialog.SetCheck(control, static_cast<CheckState>(std::stoul(known.read)));
      // What depends on the box follows it; the page may take its third state away.
      (void)page.OnCommand(control, ControlNotification::kClicked);
      dialog.SetStyle(control, known.read_style);
      break;
    case FieldKind::kChoice: {
      const std::optional<RowIndex> row =
          known.read.empty() ? std::nullopt : std::optional<RowIndex>(std::stoul(known.read));
      dialog.ComboBox(control).Select(row);
      (void)page.OnCommand(control, ControlNotification::kSelectionChange);
      break;
    }
    default:
      dialog.SetText(control, known.read);
  }
  Look(dialog);
}

void TouchedFields::RemoveValue(std::size_t field, IDialog& dialog) {
  Field& known = fields_.at(field);
  if (!CanRemove(field)) return;
  dialog.SetText(known.row.control, "");
  known.shown.clear();
  known.is_removed = true;
  known.is_edited = true;
}

}  // namespace pelora::session
