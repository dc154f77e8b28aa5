// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "directory/attribute_catalogue.h"
#include "pages/choose_name.h"
#include "pages/command.h"
#include "platform/field_rows.h"
#include "wizards/wizard_base.h"

namespace pelora {

/// One field of a wizard page: a check box for a flag, an edit control for a number or a text. All
/// that is known of it stands here.
struct WizardField {
  ControlId control;
  const Attribute& attribute;
  /// As `FieldRow::label`.
  ControlId label = 0;
  ChooseButton choose{};
  /// It is filled by its chooser alone: the page's check box does not enable it.
  bool stays_disabled = false;
  /// What the edit control holds at first.
  const char* default_text = "";
  /// Why the page is not valid while the edit control is empty; empty: it may be.
  std::string_view missing{};
  /// Another edit control that is enough when it is filled; 0: none is.
  ControlId or_else = 0;
};

/// Fields of a wizard page of which each is written into the new object: a flag always, a text or
/// number unless it is empty.
class WizardFields {
 public:
  /// `page` and `fields` outlive the object.
  WizardFields(CWizardBase& page, std::span<const WizardField> fields)
      : page_(page), fields_(fields) {}

  /// Puts the texts that fields hold at first into their controls.
  HRESULT Load(const BoundObjects& objects);
  HRESULT Collect(ChangeList& changes) const;
  /// Fails with the message of the first field that is missing.
  HRESULT Validate(std::string* message) const;
  /// Edits of what can be missing, and the choosers' buttons.
  [[nodiscard]] std::vector<Command> Commands();
  [[nodiscard]] std::vector<FieldRow> Rows() const;

 private:
  [[nodiscard]] bool DecidesValidity(const WizardField& field) const;
  std::int32_t OnChoose(const WizardField& field) const;
  [[nodiscard]] std::string Value(const WizardField& field) const;

  CWizardBase& page_;
  std::span<const WizardField> fields_;
};

/// A change of a new object's attribute: a new object is one, and all of it is to be written that
/// is not left out.
[[nodiscard]] AttributeChange MakeNewObjectChange(const Attribute& attribute, std::string value,
                                                  bool is_written = true);

/// `controls`, and then every control of the fields that is enabled with the page's check box and
/// is not among them.
[[nodiscard]] std::vector<ControlId> EnabledControls(std::span<const ControlId> controls,
                                                     std::span<const WizardField> fields);

}  // namespace pelora
