// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/pages/what_enables.h"

#include "hosts/ctl/fields/fields.h"

namespace pelora::ctl {
namespace {

bool EnablesAsFlag(HeadlessUser& user, const FieldRow& row, ControlId control) {
  if (user.dialog().Check(row.control) == CheckState::kChecked) return false;
  if (user.Click(row.control) != UserAnswer::kDone) return false;
  const bool enables = user.dialog().IsEnabled(control);
  if (!enables) user.Click(row.control);
  return enables;
}

}  // namespace

std::string WhatEnables(HeadlessUser& user, std::span<const Field> fields, ControlId control) {
  for (const Field& field : fields) {
    const FieldRow& row = field.row;
    if (user.dialog().Find(row.control) == nullptr) continue;
    if (row.kind == FieldKind::kFlag && EnablesAsFlag(user, row, control)) {
      return row.name + "=" + PrintedText(true);
    }
    if (row.kind != FieldKind::kChoice || !row.choice_buttons.empty()) continue;
    const auto before = user.dialog().ComboBox(row.control).Selection();
    for (std::size_t choice = 0; choice < row.choices.size(); ++choice) {
      if (user.SelectComboRow(row.control, choice) != UserAnswer::kDone) break;
      if (user.dialog().IsEnabled(control)) return row.name + "=" + ChoiceWord(row.choices[choice]);
    }
    if (before) user.SelectComboRow(row.control, *before);
  }
  return {};
}

}  // namespace pelora::ctl
