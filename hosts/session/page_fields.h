// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/session/directory_browser.h"
#include "hosts/session/touched_fields.h"

namespace pelora::session {

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

  [[nodiscard]] bool IsShown() const { return dialog != nullptr; }
};

}  // namespace pelora::session
