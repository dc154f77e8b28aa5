// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/sheets/make_property_sheet.h"

#include <utility>

#include "hosts/console/text/qt_text.h"
#include "hosts/session/property_tabs.h"

namespace pelora::console {

SheetResult MakePropertySheet(std::span<const session::DirectoryObject> selection,
                              const ldap::DisplaySpecifiers& specifiers,
                              session::TabSurroundings surroundings, QWidget* parent) {
  auto sheet = std::make_unique<QtPropertySheet>(
      surroundings.templates, ToQString(session::PropertiesTitle(selection)), parent);
  const auto tabs = std::make_shared<session::GuardedTabs>(std::move(surroundings));
  // They go with the sheet's machine, after its pages.
  sheet->machine().commit = [tabs] { return tabs->Commit(); };
  const session::TabsOpening opening = tabs->Open(
      selection, specifiers,
      [&sheet](std::unique_ptr<PropSheetPage> page) { return sheet->AddPage(std::move(page)); });
  if (!opening.reason.empty()) {
    return {.sheet = nullptr,
            .error = ToQString(opening.reason),
            .missing = {},
            .is_stopped = opening.is_stopped};
  }
  sheet->Start();
  return {.sheet = std::move(sheet),
          .error = {},
          .missing = ToQString(opening.missing),
          .is_outdated = [tabs] { return tabs->is_outdated(); }};
}

}  // namespace pelora::console
