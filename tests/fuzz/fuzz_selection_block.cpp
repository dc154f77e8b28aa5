// SPDX-License-Identifier: Apache-2.0
// Reads any bytes as a selection of the console's and as one of an object picker's: nothing outside
// is read, and a block is either read whole or refused.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "directory/ds_object_names.h"
#include "directory/ds_selection_list.h"

namespace {

constexpr std::size_t kFirstEntry = 8;
constexpr std::size_t kEntrySize = 48;
constexpr std::size_t kPathInEntry = 8;

void ExpectReadOrRefused(pelora::HRESULT status, const std::vector<std::string>& paths) {
  if (status != pelora::S_OK && (status != pelora::E_INVALIDARG || !paths.empty())) std::abort();
}

/// Takes what stands in the place of each path's address for a distance from the block's start:
/// hardly any address would lie in the block by chance.
void Relocate(std::span<std::byte> block) {
  const auto start = reinterpret_cast<std::uintptr_t>(block.data());
  for (std::size_t at = kFirstEntry; at + kEntrySize <= block.size(); at += kEntrySize) {
    std::uint64_t address = 0;
    std::memcpy(&address, &block[at + kPathInEntry], sizeof(address));
    address += start;
    std::memcpy(&block[at + kPathInEntry], &address, sizeof(address));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  // A block of its own, so that a byte read outside it is noticed.
  const auto memory = std::make_unique<std::byte[]>(size);
  if (size != 0) std::memcpy(memory.get(), data, size);
  const std::span<std::byte> block(memory.get(), size);
  std::vector<std::string> paths = {"from before"};
  ExpectReadOrRefused(pelora::ReadDsObjectNames(block, paths), paths);
  paths = {"from before"};
  ExpectReadOrRefused(pelora::ReadDsSelectionList(block, paths), paths);
  Relocate(block);
  paths = {"from before"};
  ExpectReadOrRefused(pelora::ReadDsSelectionList(block, paths), paths);
  return 0;
}
