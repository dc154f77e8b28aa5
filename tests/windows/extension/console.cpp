// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/extension/console.h"

#include <utility>

namespace pelora::windows::test {

using pelora::testing::FaultPoint;

PageCollector::~PageCollector() {
  for (const HPROPSHEETPAGE page : pages_) DestroyPropertySheetPage(page);
}

std::vector<HPROPSHEETPAGE> PageCollector::Take() { return std::exchange(pages_, {}); }

BOOL CALLBACK PageCollector::Add(HPROPSHEETPAGE page, LPARAM collector) {
  auto& self = *reinterpret_cast<PageCollector*>(collector);
  ++self.offered_;
  if (self.refuses_) return FALSE;
  self.pages_.push_back(page);
  return TRUE;
}

void Console::FailBinding(std::size_t nth, HRESULT status) {
  // Bindings before it take one call each.
  faulty_.plan().Fail(FaultPoint::kOpenObject, nth, status);
  faulty_.plan().Fail(FaultPoint::kOpenObject, nth + 1, status);
}

bool Console::Open(std::string_view class_name) {
  PageCollector pages;
  {
    Ref<::IShellExtInit> init;
    if (Activate(ClassId(class_name), init) != S_OK) return false;
    if (init->Initialize(nullptr, &*selection_, nullptr) != S_OK) return false;
    const auto sheet_extension = QueryFor<::IShellPropSheetExt>(*init);
    if (!sheet_extension) return false;
    if (sheet_extension->AddPages(pages.function(), pages.parameter()) != S_OK) return false;
  }
  if (pages.pages().empty()) return false;
  sheet_.emplace(pages.Take());
  return sheet_->window() != nullptr;
}

}  // namespace pelora::windows::test
