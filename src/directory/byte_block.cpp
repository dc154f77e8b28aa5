// SPDX-License-Identifier: Apache-2.0
#include "directory/byte_block.h"

#include "directory/utf.h"

namespace pelora {
namespace {

std::uint32_t ReadByte(std::span<const std::byte> block, std::size_t offset) {
  return std::to_integer<std::uint32_t>(block[offset]);
}

}  // namespace

std::uint32_t ReadUint32(std::span<const std::byte> block, std::size_t offset) {
  return ReadByte(block, offset) | (ReadByte(block, offset + 1) << 8) |
         (ReadByte(block, offset + 2) << 16) | (ReadByte(block, offset + 3) << 24);
}

std::uint64_t ReadUint64(std::span<const std::byte> block, std::size_t offset) {
  return ReadUint32(block, offset) |
         (static_cast<std::uint64_t>(ReadUint32(block, offset + 4)) << 32);
}

std::optional<std::string> ReadWideString(std::span<const std::byte> block, std::size_t offset) {
  std::u16string text;
  for (; offset < block.size() && block.size() - offset >= 2; offset += 2) {
    const auto unit =
        static_cast<char16_t>(ReadByte(block, offset) | (ReadByte(block, offset + 1) << 8));
    if (unit == u'\0') return ToUtf8(text);
    text += unit;
  }
  return std::nullopt;
}

}  // namespace pelora
