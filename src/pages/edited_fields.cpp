// SPDX-License-Identifier: Apache-2.0
#include "pages/edited_fields.h"

#include <string>

namespace pelora {

EditedFields::EditedFields(CPropPage& page, std::span<const Field> fields)
    : page_(page), fields_(fields), changed_(fields.size(), false) {}

HRESULT EditedFields::Load(const BoundObjects& objects) {
  for (std::size_t index = 0; index < fields_.size(); ++index) {
    const auto& [control, attribute, write] = fields_[index];
    switch (attribute.encoding) {
      case Encoding::kFlag:
        page_.LoadCheckBox(objects, attribute.name, control);
        break;
      case Encoding::kInteger:
        page_.LoadNumber(objects, attribute.name, control);
        break;
      default:
        page_.LoadText(objects, attribute.name, control);
    }
    // Filling an edit control has been reported as an edit.
    changed_[index] = false;
  }
  return S_OK;
}

HRESULT EditedFields::Collect(ChangeList& changes) {
  for (std::size_t index = 0; index < fields_.size(); ++index) {
    const Field& field = fields_[index];
    const bool is_written = changed_[index] || field.write == Write::kAlways;
    changes.push_back(MakeChange(field.attribute, Value(field), is_written, page_.IsMultiSelect()));
    changed_[index] = false;
  }
  return S_OK;
}

std::vector<Command> EditedFields::Commands() {
  using enum ControlNotification;
  std::vector<Command> commands;
  for (std::size_t index = 0; index < fields_.size(); ++index) {
    const bool is_box = fields_[index].attribute.encoding == Encoding::kFlag;
    commands.push_back({fields_[index].control, is_box ? kClicked : kEditChange,
                        [this, index] { return OnChanged(index); }});
  }
  return commands;
}

std::int32_t EditedFields::OnChanged(std::size_t field) {
  changed_[field] = true;
  page_.SetModified(true);
  return 0;
}

std::string EditedFields::Value(const Field& field) const {
  if (field.attribute.encoding != Encoding::kFlag) return page_.Dialog().Text(field.control);
  return page_.Dialog().Check(field.control) == CheckState::kChecked ? "1" : "0";
}

}  // namespace pelora
