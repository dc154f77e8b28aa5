// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <utility>
#include <vector>

#include "hosts/windows/com/sheet_page.h"

namespace pelora::windows::test {

/// Pages of the system's, made by the adapter, that wait for their sheet; those that none has taken
/// are destroyed with the object.
class WaitingPages {
 public:
  WaitingPages() = default;
  ~WaitingPages() {
    for (const HPROPSHEETPAGE page : pages_) DestroyPropertySheetPage(page);
  }
  WaitingPages(const WaitingPages&) = delete;
  WaitingPages& operator=(const WaitingPages&) = delete;

  bool Add(std::unique_ptr<PropSheetPage> page) {
    const HPROPSHEETPAGE made =
        SheetPage::Create(GetModuleHandleW(nullptr), nullptr, std::move(page));
    if (made != nullptr) pages_.push_back(made);
    return made != nullptr;
  }
  [[nodiscard]] std::vector<HPROPSHEETPAGE> Take() { return std::exchange(pages_, {}); }

 private:
  std::vector<HPROPSHEETPAGE> pages_;
};

}  // namespace pelora::windows::test
