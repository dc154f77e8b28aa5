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
  const auto unit_at = [block](std::size_t at) {
    return static_cast<char16_t>(ReadByte(block, at) | (ReadByte(block, at + 1) << 8));
  };
  std::size_t end = offset;
  while (end < block.size() && block.size() - end >= 2 && unit_at(end) != u'\0') end += 2;
  if (end >= block.size() || block.size() - end < 2) return std::nullopt;
  std::u16string text((end - offset) / 2, u'\0');
  for (char16_t& unit : text) {
    unit = unit_at(offset);
    offset += 2;
  }
  return ToUtf8(text);
}

void WriteUint32(std::span<std::byte> block, std::size_t offset, std::uint32_t number) {
  for (std::size_t at = 0; at < 4; ++at) {
    block[offset + at] = static_cast<std::byte>((number >> (8 * at)) & 0xFF);
  }
}

void WriteUint64(std::span<std::byte> block, std::size_t offset, std::uint64_t number) {
  WriteUint32(block, offset, static_cast<std::uint32_t>(number));
  WriteUint32(block, offset + 4, static_cast<std::uint32_t>(number >> 32));
}

std::size_t WriteWideString(std::span<std::byte> block, std::size_t offset, std::string_view text) {
  for (const char16_t unit : ToUtf16(text) + u'\0') {
    block[offset++] = static_cast<std::byte>(unit & 0xFF);
    block[offset++] = static_cast<std::byte>(unit >> 8);
  }
  return offset;
}

std::size_t WideStringSize(std::string_view text) {
  return sizeof(char16_t) * (ToUtf16(text).size() + 1);
}

}  // namespace pelora
