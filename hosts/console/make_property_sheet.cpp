// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/make_property_sheet.h"

#include <utility>

#include "hosts/console/qt_text.h"
#include "hosts/session/property_tabs.h"
#include "hosts/session/selection_data_object.h"

namespace pelora::console {

SheetResult MakePropertySheet(std::span<const session::DirectoryObject> selection,
                              const ldap::DisplaySpecifiers& specifiers, const Platform& platform,
                              const resources::ResourceFile& module, QWidget* parent) {
  auto sheet = std::make_unique<QtPropertySheet>(
      module, ToQString(session::PropertiesTitle(selection)), parent);
  const Ref<IDataObject> data_object = session::MakeSelectionDataObject(selection);
  const std::string reason = session::OpenTabs(
      selection, specifiers, platform, *data_object,
      [&sheet](std::unique_ptr<PropSheetPage> page) { return sheet->AddPage(std::move(page)); });
  if (!reason.empty()) return {.sheet = nullptr, .error = ToQString(reason)};
  sheet->Start();
  return {.sheet = std::move(sheet), .error = {}};
}

}  // namespace pelora::console
