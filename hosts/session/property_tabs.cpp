// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/property_tabs.h"

#include <algorithm>
#include <utility>

namespace pelora::session {

std::vector<Guid> TabsOf(std::span<const DirectoryObject> selection,
                         const ldap::DisplaySpecifiers& specifiers) {
  if (selection.empty()) return {};
  const ConsoleRole role =
      selection.size() == 1 ? ConsoleRole::kPropertyPage : ConsoleRole::kMultiselectPropertyPage;
  std::vector<Guid> common = specifiers.ComponentsOf(selection.front().kind.class_name, role);
  for (const DirectoryObject& object : selection.subspan(1)) {
    const std::vector<Guid> tabs = specifiers.ComponentsOf(object.kind.class_name, role);
    std::erase_if(common,
                  [&tabs](const Guid& tab) { return std::ranges::find(tabs, tab) == tabs.end(); });
  }
  return common;
}

std::string WhyNoProperties(std::span<const DirectoryObject> selection,
                            const ldap::DisplaySpecifiers& specifiers) {
  if (selection.empty()) return "Select an object to see its properties.";
  if (!TabsOf(selection, specifiers).empty()) return {};
  const std::string& type = selection.front().kind.type_text;
  const bool same_type = std::ranges::all_of(
      selection, [&type](const DirectoryObject& object) { return object.kind.type_text == type; });
  if (!same_type) return "The selected objects have no properties in common.";
  return "Objects of the type " + type + " have no properties to show.";
}

std::string PropertiesTitle(std::span<const DirectoryObject> selection) {
  if (selection.size() == 1) return selection.front().name + " Properties";
  return std::to_string(selection.size()) + " selected objects Properties";
}

HRESULT OpenTab(const Guid& class_id, const Platform& platform, IDataObject& data_object,
                const AddTabPage& add_page, const ComponentMaker& make) {
  Ref<IShellExtInit> extension;
  const HRESULT created =
      make(class_id, platform, IID_IShellExtInit, reinterpret_cast<void**>(extension.Put()));
  if (FAILED(created)) return created;
  if (const HRESULT status = extension->Initialize(&data_object); status != S_OK) return status;
  const Ref<IShellPropSheetExt> pages = Query<IShellPropSheetExt>(*extension);
  if (!pages) return E_NOINTERFACE;
  return pages->AddPages(
      [&](std::unique_ptr<PropSheetPage> page) { return add_page(*extension, std::move(page)); });
}

}  // namespace pelora::session
