// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/support/page_collector.h"

#include <utility>

namespace pelora::windows::test {

PageCollector::~PageCollector() {
  for (const HPROPSHEETPAGE page : pages_) DestroyPropertySheetPage(page);
}

std::vector<HPROPSHEETPAGE> PageCollector::Take() { return std::exchange(pages_, {}); }

BOOL CALLBACK PageCollector::Add(HPROPSHEETPAGE page, LPARAM collector) {
  auto& self = *reinterpret_cast<PageCollector*>(collector);
  ++self.offered_;
  self.pages_.push_back(page);
  return self.refuses_ ? FALSE : TRUE;
}

}  // namespace pelora::windows::test
