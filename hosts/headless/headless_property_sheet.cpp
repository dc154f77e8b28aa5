// SPDX-License-Identifier: Apache-2.0
#include "hosts/headless/headless_property_sheet.h"

#include <utility>

namespace pelora {

HeadlessPropertySheet::HeadlessPropertySheet(const resources::ResourceFile& templates)
    : machine_(templates, view_) {
  view_.pages = &machine_.pages();
  view_.on_modified = [this](std::size_t page, bool modified) {
    machine_.SetModified(page, modified);
  };
}

AddPropSheetPage HeadlessPropertySheet::PageTaker() {
  return [this](std::unique_ptr<PropSheetPage> page) { return AddPage(std::move(page)); };
}

bool HeadlessPropertySheet::Ok() {
  if (!machine_.Ok()) return false;
  Close();
  return true;
}

bool HeadlessPropertySheet::Cancel() {
  if (!machine_.Cancel()) return false;
  Close();
  return true;
}

void HeadlessPropertySheet::Close() {
  view_.Clear();
  machine_.Close();
}

}  // namespace pelora
