// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <memory>
#include <span>

#include "hosts/console/property_sheet.h"
#include "hosts/ldap/display_specifiers.h"
#include "hosts/session/directory_browser.h"
#include "platform/platform.h"

namespace pelora::console {

/// A sheet, or a sentence that says why there is none.
struct SheetResult {
  std::unique_ptr<QtPropertySheet> sheet;
  QString error;
};

/// Makes the property sheet of a selection, started but not shown. `platform` and `module` outlive
/// the sheet.
[[nodiscard]] SheetResult MakePropertySheet(std::span<const session::DirectoryObject> selection,
                                            const ldap::DisplaySpecifiers& specifiers,
                                            const Platform& platform,
                                            const resources::ResourceFile& module, QWidget* parent);

}  // namespace pelora::console
