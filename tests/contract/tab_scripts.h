// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/dialog.h"

namespace pelora::contract {

/// The distinguished name that the sample company's objects stand below.
inline constexpr std::string_view kSampleBase = "DC=linden-werke,DC=example";

/// One thing that a person does on a tab, or what is to happen in the window that the next one
/// opens.
struct TabStep {
  enum class Act {
    kClick,
    /// Clicks a box until it is checked, or unchecked; in which order its states come is the
    /// console's affair.
    kTick,
    kUntick,
    /// Replaces a text.
    kType,
    /// Clicks the row of a text in a list box.
    kSelectRow,
    kChooseComboRow,
    /// The text goes into the next address dialog, which is closed with OK.
    kTypeAddress,
    /// The names are chosen in the next object picker, query window, container browser.
    kPick,
    kFind,
    kBrowse,
  };
  Act act = Act::kClick;
  ControlId control = 0;
  std::string text{};
  RowIndex row = 0;
  std::vector<std::string> names{};
};

/// What an attribute holds afterwards; no values: it is gone.
struct TabWrite {
  std::string attribute;
  std::vector<std::string> values;
};

/// What is done on one tab of objects of the sample company, and what is in the directory after it.
struct TabScript {
  std::string component;
  /// Distinguished names of three objects; the first one is edited alone.
  std::vector<std::string> objects;
  /// Every field of the tab is edited.
  std::vector<TabStep> steps;
  std::vector<TabWrite> writes;
  std::vector<TabStep> steps_for_three;
  /// What each of the three holds afterwards.
  std::vector<TabWrite> writes_to_three;
  /// What an apply to the three is refused with, instead.
  std::string refusal_of_three{};
  /// What an apply writes to one object when nothing was touched, in its order.
  std::vector<TabWrite> always{};
  /// Controls that make sense for one object only, and are hidden for several.
  std::vector<ControlId> of_one{};
};

[[nodiscard]] const std::vector<TabScript>& TabScripts();

// For a copy of the sample company that stands below another name.

/// A text with the name that it ends in, or holds, moved there.
[[nodiscard]] std::string Rebased(std::string text, std::string_view base);
[[nodiscard]] TabScript Rebased(TabScript script, std::string_view base);

}  // namespace pelora::contract
