// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <link.h>

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace pelora::test {

/// Where the code lies that can bear an exception: the program's own, and its standard library's.
/// The toolkit's views cannot.
class CodeOfOurs {
 public:
  CodeOfOurs() {
    dl_iterate_phdr(
        [](dl_phdr_info* object, std::size_t, void* self) {
          static_cast<CodeOfOurs*>(self)->Take(*object);
          return 0;
        },
        this);
  }

  [[nodiscard]] bool Has(const void* code) const {
    const auto address = reinterpret_cast<std::uintptr_t>(code);
    for (const auto& [begin, end] : ranges_) {
      if (address >= begin && address < end) return true;
    }
    return false;
  }

 private:
  void Take(const dl_phdr_info& object) {
    const std::string_view name = object.dlpi_name;
    if (!name.empty() && name.find("libstdc++") == std::string_view::npos) return;
    for (std::size_t at = 0; at < object.dlpi_phnum; ++at) {
      const ElfW(Phdr)& part = object.dlpi_phdr[at];
      if (part.p_type != PT_LOAD || (part.p_flags & PF_X) == 0) continue;
      const std::uintptr_t begin = object.dlpi_addr + part.p_vaddr;
      ranges_.emplace_back(begin, begin + part.p_memsz);
    }
  }

  std::vector<std::pair<std::uintptr_t, std::uintptr_t>> ranges_;
};

}  // namespace pelora::test
