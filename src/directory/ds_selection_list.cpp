// SPDX-License-Identifier: Apache-2.0
#include "directory/ds_selection_list.h"

#include <cstdint>
#include <optional>
#include <utility>

#include "directory/byte_block.h"

namespace pelora {
namespace {

static_assert(sizeof(void*) == 8, "the block's layout is that of 64-bit programs");

constexpr std::size_t kCountOffset = 0;
constexpr std::size_t kFirstEntryOffset = 8;
constexpr std::size_t kEntrySize = 48;
constexpr std::size_t kPathInEntry = 8;

}  // namespace

HRESULT ReadDsSelectionList(std::span<const std::byte> block, std::vector<std::string>& paths) {
  paths.clear();
  if (block.size() < kFirstEntryOffset) return E_INVALIDARG;
  const std::size_t count = ReadUint32(block, kCountOffset);
  // Divided rather than multiplied: no count can overflow the comparison.
  if (count > (block.size() - kFirstEntryOffset) / kEntrySize) return E_INVALIDARG;

  const auto block_address = reinterpret_cast<std::uintptr_t>(block.data());
  std::vector<std::string> read;
  read.reserve(count);
  for (std::size_t entry = 0; entry < count; ++entry) {
    const std::uint64_t address =
        ReadUint64(block, kFirstEntryOffset + entry * kEntrySize + kPathInEntry);
    // An address before the block wraps to an offset beyond its end.
    std::optional<std::string> path = ReadWideString(block, address - block_address);
    if (!path) return E_INVALIDARG;
    read.push_back(*std::move(path));
  }
  paths = std::move(read);
  return S_OK;
}

}  // namespace pelora
