// SPDX-License-Identifier: Apache-2.0
#include "wizards/wizard_fields.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "pages/attribute_row.h"

namespace pelora {
namespace {

bool IsBox(const WizardField& field) { return field.attribute.encoding == Encoding::kFlag; }

}  // namespace

HRESULT WizardFields::Load(const BoundObjects& /*objects*/) {
  for (const WizardField& field : fields_) {
    const std::string_view text = field.default_text;
    if (!text.empty()) page_.Dialog().SetText(field.control, text);
  }
  return S_OK;
}

HRESULT WizardFields::Collect(ChangeList& changes) const {
  for (const WizardField& field : fields_) {
    changes.push_back(MakeNewObjectChange(field.attribute, Value(field)));
  }
  return S_OK;
}

HRESULT WizardFields::Validate(std::string* message) const {
  for (const WizardField& field : fields_) {
    if (field.missing.empty() || !CADSBase::IsFieldEmpty(page_.Dialog(), field.control)) continue;
    if (field.or_else != 0 && !CADSBase::IsFieldEmpty(page_.Dialog(), field.or_else)) continue;
    if (message != nullptr) *message = field.missing;
    return E_FAIL;
  }
  return S_OK;
}

std::vector<Command> WizardFields::Commands() {
  using enum ControlNotification;
  std::vector<Command> commands;
  for (const WizardField& field : fields_) {
    if (DecidesValidity(field)) {
      commands.push_back({field.control, kEditChange, [this] { return page_.Revalidate(); }});
    }
    if (field.choose.chooser == nullptr) continue;
    commands.push_back({field.choose.button, kClicked, [this, &field] { return OnChoose(field); }});
  }
  return commands;
}

std::vector<FieldRow> WizardFields::Rows() const {
  std::vector<FieldRow> rows;
  for (const WizardField& field : fields_) {
    FieldRow row = AttributeRow(field.attribute, field.control, field.label, field.choose);
    row.missing = field.missing;
    rows.push_back(std::move(row));
  }
  return rows;
}

bool WizardFields::DecidesValidity(const WizardField& field) const {
  const bool is_enough =
      std::ranges::find(fields_, field.control, &WizardField::or_else) != fields_.end();
  return is_enough || !field.missing.empty();
}

std::int32_t WizardFields::OnChoose(const WizardField& field) const {
  const std::optional<std::string> name =
      field.choose.chooser->choose(page_.platform(), page_.Dialog());
  if (name) page_.Dialog().SetText(field.control, *name);
  return 0;
}

std::string WizardFields::Value(const WizardField& field) const {
  if (!IsBox(field)) return page_.Dialog().Text(field.control);
  return page_.Dialog().Check(field.control) == CheckState::kChecked ? "1" : "0";
}

AttributeChange MakeNewObjectChange(const Attribute& attribute, std::string value,
                                    bool is_written) {
  constexpr bool kChanged = true;
  constexpr bool kOneObject = false;
  AttributeChange change = MakeChange(attribute, std::move(value), kChanged, kOneObject);
  change.skip = !is_written;
  return change;
}

std::vector<ControlId> EnabledControls(std::span<const ControlId> controls,
                                       std::span<const WizardField> fields) {
  std::vector<ControlId> enabled(controls.begin(), controls.end());
  const auto add = [&enabled](ControlId control) {
    if (control == 0 || std::ranges::find(enabled, control) != enabled.end()) return;
    enabled.push_back(control);
  };
  for (const WizardField& field : fields) {
    add(field.label);
    if (!field.stays_disabled) add(field.control);
    add(field.choose.button);
  }
  return enabled;
}

}  // namespace pelora
