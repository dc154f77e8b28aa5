// SPDX-License-Identifier: Apache-2.0
#include "directory/ds_object_names.h"

#include <cstdint>
#include <optional>
#include <utility>

#include "directory/utf.h"

namespace pelora {
namespace {

constexpr std::size_t kCountOffset = 16;
constexpr std::size_t kFirstEntryOffset = 20;
constexpr std::size_t kEntrySize = 16;
constexpr std::size_t kNameOffsetInEntry = 8;

std::uint32_t ReadByte(std::span<const std::byte> block, std::size_t offset) {
  return std::to_integer<std::uint32_t>(block[offset]);
}

std::uint32_t ReadUint32(std::span<const std::byte> block, std::size_t offset) {
  return ReadByte(block, offset) | (ReadByte(block, offset + 1) << 8) |
         (ReadByte(block, offset + 2) << 16) | (ReadByte(block, offset + 3) << 24);
}

/// The 0-ended UTF-16 string at `offset`, or nothing when it does not end within the block.
std::optional<std::u16string> ReadWideString(std::span<const std::byte> block, std::size_t offset) {
  std::u16string text;
  for (; offset < block.size() && block.size() - offset >= 2; offset += 2) {
    const auto unit =
        static_cast<char16_t>(ReadByte(block, offset) | (ReadByte(block, offset + 1) << 8));
    if (unit == u'\0') return text;
    text += unit;
  }
  return std::nullopt;
}

}  // namespace

HRESULT ReadDsObjectNames(std::span<const std::byte> block, std::vector<std::string>& paths) {
  paths.clear();
  if (block.size() < kFirstEntryOffset) return E_INVALIDARG;
  const std::size_t count = ReadUint32(block, kCountOffset);
  // Divided rather than multiplied: no count can overflow the comparison.
  if (count > (block.size() - kFirstEntryOffset) / kEntrySize) return E_INVALIDARG;

  std::vector<std::string> read;
  read.reserve(count);
  for (std::size_t entry = 0; entry < count; ++entry) {
    const std::size_t name_offset =
        ReadUint32(block, kFirstEntryOffset + entry * kEntrySize + kNameOffsetInEntry);
    const std::optional<std::u16string> name = ReadWideString(block, name_offset);
    if (!name) return E_INVALIDARG;
    read.push_back(ToUtf8(*name));
  }
  paths = std::move(read);
  return S_OK;
}

}  // namespace pelora
