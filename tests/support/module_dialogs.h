// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string_view>

#include "platform/dialog.h"

namespace pelora::testing {

/// What a dialog template of the module has to be.
struct ModuleDialog {
  DialogId id = 0;
  /// As `ToText` of "tests/support/dialog_text.h" gives it, behind an empty line.
  std::string_view text;
};

/// Every dialog template of the module, by number. A new dialog gets a row here.
[[nodiscard]] std::span<const ModuleDialog> ModuleDialogs();

}  // namespace pelora::testing
