// SPDX-License-Identifier: Apache-2.0
#include "pages/edited_fields.h"

#include <optional>
#include <utility>

#include "pages/attribute_row.h"

namespace pelora {
namespace {

bool IsBox(const EditedFields::Field& field) { return field.attribute.encoding == Encoding::kFlag; }

bool IsReadOnly(const EditedFields::Field& field) {
  return field.attribute.multi_selection == MultiSelectionRule::kNeverWritten;
}

}  // namespace

EditedFields::EditedFields(CPropPage& page, std::span<const Field> fields)
    : CPropPageExt(page), fields_(fields), changed_(fields.size(), false) {}

HRESULT EditedFields::Load(const BoundObjects& objects) {
  for (std::size_t index = 0; index < fields_.size(); ++index) {
    LoadField(fields_[index], objects);
    EnableDependents(fields_[index]);
    // Filling an edit control has been reported as an edit.
    changed_[index] = false;
  }
  return S_OK;
}

HRESULT EditedFields::Collect(ChangeList& changes) {
  for (std::size_t index = 0; index < fields_.size(); ++index) {
    const Field& field = fields_[index];
    if (IsReadOnly(field)) continue;
    const bool is_written = changed_[index] || field.write == Write::kAlways;
    changes.push_back(
        MakeChange(field.attribute, Value(field), is_written, page().IsMultiSelect()));
    if (field.forget == Forget::kAtLoadAndCollect) changed_[index] = false;
  }
  return S_OK;
}

HRESULT EditedFields::Validate(std::string* message) const {
  for (const Field& field : fields_) {
    if (field.missing.empty() || !CADSBase::IsFieldEmpty(dialog(), field.control)) continue;
    if (field.or_else != 0 && !CADSBase::IsFieldEmpty(dialog(), field.or_else)) continue;
    if (message != nullptr) *message = field.missing;
    return E_FAIL;
  }
  return S_OK;
}

std::vector<Command> EditedFields::Commands() {
  using enum ControlNotification;
  std::vector<Command> commands;
  for (std::size_t index = 0; index < fields_.size(); ++index) {
    const Field& field = fields_[index];
    if (IsReadOnly(field)) continue;
    commands.push_back({field.control, IsBox(field) ? kClicked : kEditChange,
                        [this, index] { return OnChanged(index); }});
    if (field.choose.chooser == nullptr) continue;
    commands.push_back({field.choose.button, kClicked, [this, &field] { return OnChoose(field); }});
  }
  return commands;
}

std::vector<FieldRow> EditedFields::Rows() const {
  std::vector<FieldRow> rows;
  for (const Field& field : fields_) {
    FieldRow row = AttributeRow(field.attribute, field.control, field.label, field.choose);
    row.missing = field.missing;
    rows.push_back(std::move(row));
  }
  return rows;
}

void EditedFields::LoadField(const Field& field, const BoundObjects& objects) const {
  const std::string_view attribute = field.attribute.name;
  if (IsBox(field)) {
    page().LoadCheckBox(objects, attribute, field.control);
  } else if (field.attribute.encoding == Encoding::kInteger) {
    page().LoadNumber(objects, attribute, field.control);
  } else if (field.of_several == OfSeveral::kNothing) {
    page().LoadSingleText(objects, attribute, field.control);
  } else {
    page().LoadText(objects, attribute, field.control);
  }
}

std::int32_t EditedFields::OnChanged(std::size_t field) {
  const Field& row = fields_[field];
  changed_[field] = true;
  EnableDependents(row);
  if (row.third_state == ThirdState::kLeaves) {
    dialog().SetStyle(row.control, ButtonStyle::kAutoCheckBox);
  }
  page().SetModified(true);
  return 0;
}

std::int32_t EditedFields::OnChoose(const Field& field) {
  const NameChooser& chooser = *field.choose.chooser;
  const std::optional<std::string> name = chooser.choose(page().platform(), dialog());
  if (!name) return chooser.nothing_chosen;
  // The control reports it as an edit.
  dialog().SetText(field.control, *name);
  if (chooser.marks_modified) page().SetModified(true);
  return 0;
}

void EditedFields::EnableDependents(const Field& field) const {
  if (field.enables.empty()) return;
  const bool is_checked = dialog().Check(field.control) == CheckState::kChecked;
  for (const ControlId control : field.enables) dialog().SetEnabled(control, is_checked);
}

std::string EditedFields::Value(const Field& field) const {
  if (!IsBox(field)) return dialog().Text(field.control);
  return dialog().Check(field.control) == CheckState::kChecked ? "1" : "0";
}

}  // namespace pelora
