// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "hosts/ldap/display_specifiers.h"
#include "hosts/session/directory_browser.h"
#include "platform/platform.h"
#include "platform/shell_extension.h"
#include "server/component_server.h"

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

/// Takes a page that a tab's component has added into a sheet; as `AddPropSheetPage`.
using AddTabPage = std::function<bool(IUnknown& component, std::unique_ptr<PropSheetPage> page)>;

/// Makes a component of the extension, as `CreateComponent` does.
using ComponentMaker = std::function<HRESULT(const Guid& class_id, const Platform& platform,
                                             const Guid& iid, void** object)>;

/// Makes the component of a tab, initialises it with a selection and lets it add its pages; the
/// answer is the status that kept it from doing so. `platform` outlives the pages.
///
/// `data_object` stands for the selection (`MakeSelectionDataObject`); nobody keeps it.
[[nodiscard]] HRESULT OpenTab(const Guid& class_id, const Platform& platform,
                              IDataObject& data_object, const AddTabPage& add_page,
                              const ComponentMaker& make = &CreateComponent);

}  // namespace pelora::session
