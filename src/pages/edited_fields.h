// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "directory/attribute_catalogue.h"
#include "pages/choose_name.h"
#include "pages/dialog_page.h"
#include "pages/prop_page_ext.h"

namespace pelora {

/// Controls of which each shows one attribute and is written when it was changed: a check box for a
/// flag, an edit control for a number or a text. A control counts as changed from the click or edit
/// that it reports. An attribute that is never written is shown and nothing else.
///
/// All that is known of a field stands in its row; a field group for which that is enough is such a
/// list of rows.
class EditedFields : public CPropPageExt {
 public:
  enum class Write : std::uint8_t {
    kWhenChanged,
    /// On every apply, as far as the attribute's rule for multi-selections allows.
    kAlways,
  };
  /// When a field does not count as changed any more.
  enum class Forget : std::uint8_t {
    kAtLoadAndCollect,
    /// Once changed it is written by every apply until the page is loaded again.
    kAtLoad,
  };
  /// What becomes of a box that was loaded indeterminate.
  enum class ThirdState : std::uint8_t {
    /// It can be clicked back into it.
    kStays,
    /// It is gone for good with the first click.
    kLeaves,
  };
  /// What an edit control shows of several objects.
  enum class OfSeveral : std::uint8_t {
    /// The text or number in which they agree.
    kCommon,
    /// Nothing.
    kNothing,
  };

  struct Field {
    ControlId control;
    const Attribute& attribute;
    /// As `FieldRow::label`.
    ControlId label = 0;
    ChooseButton choose{};
    Write write = Write::kWhenChanged;
    Forget forget = Forget::kAtLoadAndCollect;
    ThirdState third_state = ThirdState::kStays;
    OfSeveral of_several = OfSeveral::kCommon;
    /// Controls that are enabled exactly while this box is checked.
    std::span<const ControlId> enables{};
    /// What the validation says while the edit control is empty; empty: it may be.
    std::string_view missing{};
    /// Another edit control that is enough when it is filled; 0: none is.
    ControlId or_else = 0;
  };

  /// `page` and `fields` outlive the object.
  EditedFields(CPropPage& page, std::span<const Field> fields);

  /// Loads the fields in their order, each by its attribute's encoding.
  HRESULT Load(const BoundObjects& objects);
  /// Appends one change per field that can be written, in their order.
  HRESULT Collect(ChangeList& changes);
  /// Fails with the message of the first field that is missing.
  HRESULT Validate(std::string* message) const;
  /// A click or edit of each field, which marks the page modified, and its chooser's button.
  [[nodiscard]] std::vector<Command> Commands();
  [[nodiscard]] std::vector<FieldRow> Rows() const;

 private:
  void LoadField(const Field& field, const BoundObjects& objects) const;
  std::int32_t OnChanged(std::size_t field);
  std::int32_t OnChoose(const Field& field);
  void EnableDependents(const Field& field) const;
  [[nodiscard]] std::string Value(const Field& field) const;

  std::span<const Field> fields_;
  /// By field.
  std::vector<bool> changed_;
};

}  // namespace pelora
