// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/chosen_default.h"

namespace pelora::session {

std::optional<ChosenDefault> ChosenDefaultBy(const PageFields& fields, ControlId button) {
  if (button == 0 || !fields.IsShown()) return std::nullopt;
  for (std::size_t field = 0; field < fields.touched.Count(); ++field) {
    const FieldRow& row = fields.touched.Row(field);
    if (row.make_default != button || !row.keep_default) continue;
    const IListBox& list = fields.dialog->ListBox(row.control);
    const std::optional<RowIndex> selected = list.Selection();
    if (!selected) return std::nullopt;
    return ChosenDefault{.field = field, .entry = list.Data(*selected)};
  }
  return std::nullopt;
}

void KeepAlone(const PageFields& fields, const ChosenDefault& chosen) {
  if (!fields.IsShown()) return;
  const FieldRow& field = fields.touched.Row(chosen.field);
  const IListBox& list = fields.dialog->ListBox(field.control);
  for (RowIndex row = 0; row < list.Count(); ++row) {
    if (list.Data(row) != chosen.entry) continue;
    field.keep_default(row);
    return;
  }
}

}  // namespace pelora::session
