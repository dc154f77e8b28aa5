// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string>
#include <vector>

#include "hosts/ldap/display_specifiers.h"
#include "hosts/session/directory_browser.h"
#include "platform/platform.h"
#include "platform/shell_extension.h"

namespace pelora::session {

/// The component classes of the tabs that a selection gets: those that every selected object's
/// class has by the directory's display specifiers, in the order of the first one's. None for an
/// empty selection.
[[nodiscard]] std::vector<Guid> TabsOf(std::span<const DirectoryObject> selection,
                                       const ldap::DisplaySpecifiers& specifiers);

/// Why a selection has no properties to show, as a sentence; empty when it has some.
[[nodiscard]] std::string WhyNoProperties(std::span<const DirectoryObject> selection,
                                          const ldap::DisplaySpecifiers& specifiers);

/// What a sheet of the selection's properties is called.
[[nodiscard]] std::string PropertiesTitle(std::span<const DirectoryObject> selection);

/// Lets the component of each tab of a selection add its pages: each is initialised with the
/// selection, and one that refuses stays out. Empty when there is a page at least; else a sentence
/// that says why there is none. `platform` outlives the pages.
///
/// `data_object` stands for the selection (`MakeSelectionDataObject`); nobody keeps it.
[[nodiscard]] std::string OpenTabs(std::span<const DirectoryObject> selection,
                                   const ldap::DisplaySpecifiers& specifiers,
                                   const Platform& platform, IDataObject& data_object,
                                   const AddPropSheetPage& add_page);

}  // namespace pelora::session
