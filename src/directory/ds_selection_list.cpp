// SPDX-License-Identifier: Apache-2.0
#include "directory/ds_selection_list.h"

#include <array>
#include <cstdint>
#include <optional>
#include <utility>

namespace pelora {
namespace {

static_assert(sizeof(void*) == 8, "the block's layout is that of 64-bit programs");

constexpr std::size_t kCountOffset = 0;
constexpr std::size_t kFirstEntryOffset = 8;
constexpr std::size_t kEntrySize = 48;
constexpr std::size_t kNameInEntry = 0;
constexpr std::size_t kPathInEntry = 8;
constexpr std::size_t kClassInEntry = 16;
constexpr std::size_t kPrincipalNameInEntry = 24;
constexpr std::size_t kScopeTypeInEntry = 40;
constexpr std::uint32_t kJoinedDomain = 2;

/// The string at an address; nothing when it does not begin and end in memory that can be read.
std::optional<std::string> ReadTextAt(std::uint64_t address, std::span<const std::byte> block,
                                      const MemoryFrom& elsewhere) {
  // An address before the block wraps to an offset beyond its end.
  const std::uint64_t offset = address - reinterpret_cast<std::uintptr_t>(block.data());
  return offset < block.size() ? ReadWideString(block, offset)
                               : ReadWideString(elsewhere(address), 0);
}

/// A text of an entry, and where the entry has its address.
struct TextInEntry {
  std::size_t place;
  std::string_view text;
};

std::array<TextInEntry, 4> TextsOf(const ChosenObject& object) {
  return {{{kNameInEntry, object.name},
           {kPathInEntry, object.path},
           {kClassInEntry, object.object_class},
           {kPrincipalNameInEntry, {}}}};
}

}  // namespace

HRESULT ReadDsSelectionList(std::span<const std::byte> block, std::vector<std::string>& paths) {
  const auto nowhere = [](std::uintptr_t) { return std::span<const std::byte>(); };
  return ReadScatteredSelectionList(block, nowhere, paths);
}

HRESULT ReadScatteredSelectionList(std::span<const std::byte> block, const MemoryFrom& elsewhere,
                                   std::vector<std::string>& paths) {
  paths.clear();
  if (block.size() < kFirstEntryOffset) return E_INVALIDARG;
  const std::size_t count = ReadUint32(block, kCountOffset);
  // Divided rather than multiplied: no count can overflow the comparison.
  if (count > (block.size() - kFirstEntryOffset) / kEntrySize) return E_INVALIDARG;

  std::vector<std::string> read;
  read.reserve(count);
  for (std::size_t entry = 0; entry < count; ++entry) {
    const std::uint64_t address =
        ReadUint64(block, kFirstEntryOffset + entry * kEntrySize + kPathInEntry);
    std::optional<std::string> path = ReadTextAt(address, block, elsewhere);
    if (!path) return E_INVALIDARG;
    read.push_back(*std::move(path));
  }
  paths = std::move(read);
  return S_OK;
}

HeapBlock MakeDsSelectionList(std::span<const ChosenObject> objects) {
  std::size_t string = kFirstEntryOffset + kEntrySize * objects.size();
  std::size_t size = string;
  for (const ChosenObject& object : objects) {
    for (const TextInEntry& text : TextsOf(object)) size += WideStringSize(text.text);
  }
  HeapBlock block(size);
  const auto block_address = reinterpret_cast<std::uintptr_t>(block.bytes.get());
  WriteUint32(block.span(), kCountOffset, static_cast<std::uint32_t>(objects.size()));
  std::size_t entry = kFirstEntryOffset;
  for (const ChosenObject& object : objects) {
    for (const TextInEntry& text : TextsOf(object)) {
      WriteUint64(block.span(), entry + text.place, block_address + string);
      string = WriteWideString(block.span(), string, text.text);
    }
    WriteUint32(block.span(), entry + kScopeTypeInEntry, kJoinedDomain);
    entry += kEntrySize;
  }
  return block;
}

}  // namespace pelora
