// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/property_tabs.h"

#include <algorithm>

#include "hosts/console/selection_data_object.h"
#include "server/component_server.h"

namespace pelora::console {
namespace {

QString TitleOf(std::span<const DirectoryObject> selection) {
  if (selection.size() == 1) return QStringLiteral("%1 Properties").arg(selection.front().name);
  return QStringLiteral("%1 selected objects Properties").arg(selection.size());
}

QString CodeOf(HRESULT status) {
  return QStringLiteral("0X") + QString::number(static_cast<std::uint32_t>(status), 16).toUpper();
}

/// Lets one tab's component add its pages; the answer is the status that kept it from doing so.
HRESULT AddTab(const Guid& class_id, const Platform& platform, IDataObject& selection,
               QtPropertySheet& sheet) {
  Ref<IShellExtInit> extension;
  const HRESULT created = CreateComponent(class_id, platform, IID_IShellExtInit,
                                          reinterpret_cast<void**>(extension.Put()));
  if (FAILED(created)) return created;
  if (const HRESULT status = extension->Initialize(&selection); status != S_OK) return status;
  const Ref<IShellPropSheetExt> pages = Query<IShellPropSheetExt>(*extension);
  if (!pages) return E_NOINTERFACE;
  return pages->AddPages(
      [&sheet](std::unique_ptr<PropSheetPage> page) { return sheet.AddPage(std::move(page)); });
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

QString WhyNoProperties(std::span<const DirectoryObject> selection,
                        const ldap::DisplaySpecifiers& specifiers) {
  if (selection.empty()) return QStringLiteral("Select an object to see its properties.");
  if (!TabsOf(selection, specifiers).empty()) return {};
  const QString& type = selection.front().kind.type_text;
  const bool same_type = std::ranges::all_of(
      selection, [&type](const DirectoryObject& object) { return object.kind.type_text == type; });
  if (!same_type) return QStringLiteral("The selected objects have no properties in common.");
  return QStringLiteral("Objects of the type %1 have no properties to show.").arg(type);
}

SheetResult MakePropertySheet(std::span<const DirectoryObject> selection,
                              const ldap::DisplaySpecifiers& specifiers, const Platform& platform,
                              const resources::ResourceFile& module, QWidget* parent) {
  const std::vector<Guid> tabs = TabsOf(selection, specifiers);
  if (tabs.empty()) return {.sheet = nullptr, .error = WhyNoProperties(selection, specifiers)};
  const Ref<IDataObject> data_object = MakeSelectionDataObject(selection);
  auto sheet = std::make_unique<QtPropertySheet>(module, TitleOf(selection), parent);
  HRESULT failure = S_OK;
  for (const Guid& tab : tabs) {
    if (const HRESULT status = AddTab(tab, platform, *data_object, *sheet); status != S_OK) {
      failure = status;
    }
  }
  if (sheet->PageCount() == 0) {
    return {.sheet = nullptr,
            .error = QStringLiteral("The properties of %1 cannot be shown (error code %2).")
                         .arg(selection.front().name, CodeOf(failure))};
  }
  sheet->Start();
  return {.sheet = std::move(sheet), .error = {}};
}

}  // namespace pelora::console
