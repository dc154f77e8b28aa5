// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace pelora::windows::test {

/// What the file of a 64-bit module says of itself.
struct PeFile {
  std::size_t size = 0;
  std::uint16_t machine = 0;
  std::uint16_t characteristics = 0;
  std::uint16_t dll_characteristics = 0;
  std::uint32_t symbol_count = 0;
  std::vector<std::string> sections;
  /// Names by which functions are exported, and how many exports there are in all.
  std::vector<std::string> exports;
  std::size_t export_count = 0;
  /// Modules that are loaded with it, in upper case.
  std::vector<std::string> imports;
  /// Blocks of addresses that are put right when the module is loaded elsewhere.
  std::size_t relocation_blocks = 0;
  /// How many places in the code call the function that ends the process when the stack has been
  /// run over.
  std::size_t stack_checks = 0;
};

/// Reads a file; throws when it is no such module.
[[nodiscard]] PeFile ReadPeFile(const std::wstring& path);

}  // namespace pelora::windows::test
