// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include "hosts/windows/system_headers.h"

namespace pelora::windows::test {

/// Counts the blocks of the component library's memory (strings, arrays and variants of automation
/// among them) that have been allocated since it was made and not freed. One may live at a time.
///
/// Automation keeps freed strings for later use unless the environment says `OANOCACHE=1`; the
/// counter says so before the first string is made.
class MallocCounter {
 public:
  MallocCounter();
  ~MallocCounter();
  MallocCounter(const MallocCounter&) = delete;
  MallocCounter& operator=(const MallocCounter&) = delete;

  [[nodiscard]] long live() const;
  /// Times that a block was freed which had been freed before. Such a free is not carried out.
  [[nodiscard]] long freed_twice() const;

 private:
  class Spy;
  Spy* spy_;
};

}  // namespace pelora::windows::test
