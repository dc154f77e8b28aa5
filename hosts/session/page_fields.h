// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/session/directory_browser.h"
#include "hosts/session/touched_fields.h"

namespace pelora::session {

/// A value that some of the selected objects have in a field.
struct HeldValue {
  /// As a person reads it: "yes" or "no" for a flag, a choice's own text. Empty: not set.
  std::string text;
  /// Names of the objects, in the order of the selection.
  std::vector<std::string> objects;
};

/// Of how many of the selected objects a feature is on, off, and neither, by what was read or
/// written last. What stands in both lists is on and off at once, and counts as neither.
struct FeatureCounts {
  std::size_t on = 0;
  std::size_t off = 0;
  std::size_t unset = 0;
};

/// What the selected objects have in one field.
struct GatheredField {
  /// See `ValuesOf`.
  std::vector<HeldValue> values;
  /// Of a switch.
  FeatureCounts counts;
  /// Of a field of numbers: that of each object, in the order of the selection; 0: none.
  std::vector<std::int64_t> numbers;
};

/// The fields of one page of a sheet, for a host that shows more of them than the page does. Lives
/// as long as the sheet's tabs.
struct PageFields {
  TouchedFields touched;
  /// What each field is called, in their order; empty where the template says nothing of it.
  std::vector<std::string> labels;
  /// The page's dialog and who is told of it, from when it has been filled until it goes.
  IDialog* dialog = nullptr;
  IDialogController* page = nullptr;
  /// The objects that the sheet is for; the tabs' own.
  std::span<const DirectoryObject> selection;
  /// What counts as seen of an attribute of one of them; none: not set.
  std::function<std::vector<std::string>(const DirectoryObject& object, std::string_view attribute)>
      seen;
  /// What one of them shows in a field ("1" or "0": a box) where that is something else than its
  /// attribute's own value. May be none.
  std::function<std::string(std::size_t field, const DirectoryObject& object)> shown;
  /// The same for each field, as of the last `GatherValues`: a page is looked at with every key,
  /// and there may be thousands of objects.
  std::vector<GatheredField> gathered;

  /// What was recorded of an attribute of one of the objects and is not written goes nowhere. May
  /// be none.
  std::function<void(const DirectoryObject& object, std::string_view attribute)> drop{};

  [[nodiscard]] bool IsShown() const { return dialog != nullptr; }
};

/// Sets a field of a shown page back to what was read, where it can be; of a list nothing waits to
/// be written any more.
void SetBack(PageFields& fields, std::size_t field);

}  // namespace pelora::session
