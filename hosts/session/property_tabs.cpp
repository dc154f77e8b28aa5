// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/property_tabs.h"

#include <algorithm>
#include <utility>

#include "directory/error_text.h"
#include "server/component_server.h"

namespace pelora::session {
namespace {

/// Lets one tab's component add its pages; the answer is the status that kept it from doing so.
HRESULT AddTab(const Guid& class_id, const Platform& platform, IDataObject& selection,
               const AddPropSheetPage& add_page) {
  Ref<IShellExtInit> extension;
  const HRESULT created = CreateComponent(class_id, platform, IID_IShellExtInit,
                                          reinterpret_cast<void**>(extension.Put()));
  if (FAILED(created)) return created;
  if (const HRESULT status = extension->Initialize(&selection); status != S_OK) return status;
  const Ref<IShellPropSheetExt> pages = Query<IShellPropSheetExt>(*extension);
  return pages ? pages->AddPages(add_page) : E_NOINTERFACE;
}

}  // namespace

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

std::string OpenTabs(std::span<const DirectoryObject> selection,
                     const ldap::DisplaySpecifiers& specifiers, const Platform& platform,
                     IDataObject& data_object, const AddPropSheetPage& add_page) {
  const std::vector<Guid> tabs = TabsOf(selection, specifiers);
  if (tabs.empty()) return WhyNoProperties(selection, specifiers);
  std::size_t page_count = 0;
  const auto count_page = [&](std::unique_ptr<PropSheetPage> page) {
    const bool is_taken = add_page(std::move(page));
    if (is_taken) ++page_count;
    return is_taken;
  };
  HRESULT failure = S_OK;
  for (const Guid& tab : tabs) {
    const HRESULT status = AddTab(tab, platform, data_object, count_page);
    if (status != S_OK) failure = status;
  }
  if (page_count != 0) return {};
  return "The properties of " + selection.front().name + " cannot be shown (error code " +
         CodeText(failure) + ").";
}

}  // namespace pelora::session
