// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <span>
#include <vector>

#include "hosts/console/directory_browser.h"
#include "hosts/console/property_sheet.h"
#include "hosts/ldap/display_specifiers.h"
#include "platform/platform.h"

namespace pelora::console {

/// The component classes of the tabs that a selection gets: those that every selected object's
/// class has by the directory's display specifiers, in the order of the first one's. None for an
/// empty selection.
[[nodiscard]] std::vector<Guid> TabsOf(std::span<const DirectoryObject> selection,
                                       const ldap::DisplaySpecifiers& specifiers);

/// Why a selection has no properties to show, as a sentence; empty when it has some.
[[nodiscard]] QString WhyNoProperties(std::span<const DirectoryObject> selection,
                                      const ldap::DisplaySpecifiers& specifiers);

/// A sheet, or a sentence that says why there is none.
struct SheetResult {
  std::unique_ptr<QtPropertySheet> sheet;
  QString error;
};

/// Makes the property sheet of a selection, started but not shown. Each tab's component is
/// initialised with the selection and adds its pages; one that refuses stays out. `platform` and
/// `module` outlive the sheet.
[[nodiscard]] SheetResult MakePropertySheet(std::span<const DirectoryObject> selection,
                                            const ldap::DisplaySpecifiers& specifiers,
                                            const Platform& platform,
                                            const resources::ResourceFile& module, QWidget* parent);

}  // namespace pelora::console
