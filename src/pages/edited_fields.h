// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "directory/attribute_catalogue.h"
#include "pages/dialog_page.h"
#include "pages/prop_page.h"

namespace pelora {

/// Controls of which each shows one attribute and is written when it was changed: a check box for a
/// flag, an edit control for a number or a text.
///
/// A control counts as changed from the click or edit that it reports until the next load or
/// collect. It registers nothing: the page or field group that holds it calls `Load` and `Collect`
/// where they belong among its own, and routes the commands.
class EditedFields {
 public:
  enum class Write : std::uint8_t {
    kWhenChanged,
    /// On every apply, as far as the attribute's rule for multi-selections allows.
    kAlways,
  };
  struct Field {
    ControlId control;
    const Attribute& attribute;
    Write write = Write::kWhenChanged;
  };

  /// `page` and `fields` outlive the object.
  EditedFields(CPropPage& page, std::span<const Field> fields);

  /// Loads the fields in their order, each by its attribute's encoding.
  HRESULT Load(const BoundObjects& objects);
  /// Appends one change per field, in their order.
  HRESULT Collect(ChangeList& changes);

  /// A click or edit of each field; it marks the page modified.
  [[nodiscard]] std::vector<Command> Commands();

 private:
  std::int32_t OnChanged(std::size_t field);
  [[nodiscard]] std::string Value(const Field& field) const;

  CPropPage& page_;
  std::span<const Field> fields_;
  /// By field.
  std::vector<bool> changed_;
};

}  // namespace pelora
