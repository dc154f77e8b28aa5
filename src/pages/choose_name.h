// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/field_rows.h"
#include "platform/platform.h"

namespace pelora {

/// How the administrator chooses one object for an edit control that is filled with its name.
struct NameChooser {
  /// The name as the field stores it, or none when the choice fails or is cancelled. The chooser
  /// belongs to `owner`.
  std::optional<std::string> (*choose)(const Platform& platform, IDialog& owner) = nullptr;
  /// What a field holds whose name is chosen so.
  FieldKind kind = FieldKind::kName;
  /// Result of a tab's button with which nothing was chosen.
  std::int32_t nothing_chosen = 0;
  /// Whether the button marks the page modified, beside the edit that the control reports.
  bool marks_modified = true;
};

/// The button beside an edit control that is filled by a chooser.
struct ChooseButton {
  ControlId button = 0;
  const NameChooser* chooser = nullptr;
};

/// Gives the distinguished name of a user.
extern const NameChooser kUserChooser;
/// Gives the `cn` of a computer.
extern const NameChooser kComputerChooser;
/// Gives the distinguished name of a container, from the tree of the whole directory.
extern const NameChooser kContainerChooser;

}  // namespace pelora
