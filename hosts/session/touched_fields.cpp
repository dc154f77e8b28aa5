// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/touched_fields.h"

#include <algorithm>
#include <utility>

#include "directory/ascii_case.h"

namespace pelora::session {
namespace {

/// Whether the field's control shows all of its value.
bool ShowsWholeValue(const FieldRow& row) {
  if (!row.entry.empty()) return false;
  switch (row.kind) {
    case FieldKind::kFlag:
    case FieldKind::kNumber:
    case FieldKind::kText:
    case FieldKind::kServer:
      return true;
    case FieldKind::kChoice:
      return row.choice_buttons.empty();
    default:
      return false;
  }
}

std::string ShownBy(const FieldRow& row, IDialog& dialog) {
  switch (row.kind) {
    case FieldKind::kFlag:
      return std::to_string(static_cast<int>(dialog.Check(row.control)));
    case FieldKind::kChoice: {
      const auto chosen = dialog.ComboBox(row.control).Selection();
      return chosen ? std::to_string(*chosen) : std::string();
    }
    default:
      return dialog.Text(row.control);
  }
}

bool Names(const auto& attributes, std::string_view attribute) {
  return std::ranges::any_of(attributes, [attribute](std::string_view name) {
    return EqualsWithoutCase(name, attribute);
  });
}

}  // namespace

void TouchedFields::Watch(std::vector<FieldRow> fields) {
  for (FieldRow& row : fields) {
    if (ShowsWholeValue(row)) {
      fields_.push_back({.row = std::move(row), .shown = {}});
    } else {
      always_.insert(always_.end(), row.attributes.begin(), row.attributes.end());
    }
  }
}

void TouchedFields::Settle(IDialog& dialog) {
  for (Field& field : fields_) {
    field.shown = ShownBy(field.row, dialog);
    field.is_touched = false;
  }
}

void TouchedFields::Touch(ControlId control) {
  for (Field& field : fields_) {
    if (field.row.control == control) field.is_touched = true;
  }
}

void TouchedFields::Look(IDialog& dialog) {
  for (Field& field : fields_) {
    if (ShownBy(field.row, dialog) != field.shown) field.is_touched = true;
  }
}

bool TouchedFields::IsWanted(std::string_view attribute) const {
  if (Names(always_, attribute)) return true;
  bool is_looked_at = false;
  for (const Field& field : fields_) {
    if (!Names(field.row.attributes, attribute)) continue;
    if (field.is_touched) return true;
    is_looked_at = true;
  }
  return !is_looked_at;
}

}  // namespace pelora::session
