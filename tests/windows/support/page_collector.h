// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <vector>

#include "hosts/windows/system_headers.h"

namespace pelora::windows::test {

/// Pages that components handed over, not in a sheet yet. Those that are not taken are destroyed.
class PageCollector {
 public:
  PageCollector() = default;
  ~PageCollector();
  PageCollector(const PageCollector&) = delete;
  PageCollector& operator=(const PageCollector&) = delete;

  /// Answers no from now on. The pages are taken all the same.
  void Refuse() { refuses_ = true; }
  /// For `AddPages`.
  [[nodiscard]] LPFNADDPROPSHEETPAGE function() const { return &Add; }
  [[nodiscard]] LPARAM parameter() const { return reinterpret_cast<LPARAM>(this); }

  /// Pages offered so far.
  [[nodiscard]] std::size_t offered() const { return offered_; }
  [[nodiscard]] const std::vector<HPROPSHEETPAGE>& pages() const { return pages_; }
  /// Gives the pages away.
  [[nodiscard]] std::vector<HPROPSHEETPAGE> Take();

 private:
  static BOOL CALLBACK Add(HPROPSHEETPAGE page, LPARAM collector);

  bool refuses_ = false;
  std::size_t offered_ = 0;
  std::vector<HPROPSHEETPAGE> pages_;
};

}  // namespace pelora::windows::test
