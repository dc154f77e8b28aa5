// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/base64.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace pelora::ldap {
namespace {

constexpr std::string_view kDigits =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::size_t kDigitsInGroup = 4;
constexpr std::size_t kBytesInGroup = 3;
constexpr unsigned kBitsInDigit = 6;
constexpr unsigned kBitsInByte = 8;
constexpr std::uint32_t kDigitMask = 0x3F;
constexpr std::uint32_t kByteMask = 0xFF;

}  // namespace

std::string EncodeBase64(std::string_view bytes) {
  std::string text;
  text.reserve((bytes.size() + kBytesInGroup - 1) / kBytesInGroup * kDigitsInGroup);
  for (; !bytes.empty(); bytes.remove_prefix(std::min(kBytesInGroup, bytes.size()))) {
    std::uint32_t group = 0;
    for (std::size_t at = 0; at < kBytesInGroup; ++at) {
      group <<= kBitsInByte;
      if (at < bytes.size()) group |= static_cast<unsigned char>(bytes[at]);
    }
    for (std::size_t at = 0; at < kDigitsInGroup; ++at) {
      const auto shift = static_cast<unsigned>(kDigitsInGroup - 1 - at) * kBitsInDigit;
      text += at <= bytes.size() ? kDigits[(group >> shift) & kDigitMask] : '=';
    }
  }
  return text;
}

std::optional<std::string> DecodeBase64(std::string_view text) {
  if (text.size() % kDigitsInGroup != 0) return std::nullopt;
  std::size_t padding = 0;
  while (padding < 2 && text.ends_with('=')) {
    text.remove_suffix(1);
    ++padding;
  }
  std::string bytes;
  bytes.reserve(text.size());
  std::uint32_t bits = 0;
  unsigned count = 0;
  for (const char digit : text) {
    const std::size_t number = kDigits.find(digit);
    if (number == std::string_view::npos) return std::nullopt;
    bits = (bits << kBitsInDigit) | static_cast<std::uint32_t>(number);
    count += kBitsInDigit;
    if (count < kBitsInByte) continue;
    count -= kBitsInByte;
    bytes += static_cast<char>((bits >> count) & kByteMask);
  }
  return bytes;
}

}  // namespace pelora::ldap
