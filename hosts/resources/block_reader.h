// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace pelora::resources {

/// Reads little-endian numbers and UTF-16 strings from the front of a block of bytes, and nothing
/// outside it. A read that would leave the block fails; from then on every read fails and gives 0
/// or an empty value, so that a caller may read a whole record and ask `ok` once.
class BlockReader {
 public:
  explicit BlockReader(std::span<const std::byte> block) : block_(block) {}

  [[nodiscard]] bool ok() const { return ok_; }
  [[nodiscard]] std::size_t position() const { return position_; }
  [[nodiscard]] std::size_t remaining() const { return block_.size() - position_; }

  template <std::unsigned_integral T>
  [[nodiscard]] T Read() {
    T value = 0;
    std::size_t shift = 0;
    for (const std::byte part : Take(sizeof(T))) {
      value = static_cast<T>(value | static_cast<T>(static_cast<T>(part) << shift));
      shift += 8;
    }
    return value;
  }

  [[nodiscard]] std::int16_t ReadSigned16() {
    return static_cast<std::int16_t>(Read<std::uint16_t>());
  }

  /// A string up to its ending 0, which is read too. Without one the read fails.
  [[nodiscard]] std::u16string ReadTerminated() {
    const std::span<const std::byte> rest = block_.subspan(position_);
    for (std::size_t length = 0; ok_ && 2 * length + 1 < rest.size(); ++length) {
      if (UnitAt(rest, length) != 0) continue;
      std::u16string text = ReadCounted(length);
      (void)Take(sizeof(char16_t));
      return text;
    }
    ok_ = false;
    return {};
  }

  [[nodiscard]] std::u16string ReadCounted(std::size_t length) {
    if (length > remaining() / sizeof(char16_t)) {
      ok_ = false;
      return {};
    }
    const std::span<const std::byte> units = Take(length * sizeof(char16_t));
    std::u16string text(units.size() / sizeof(char16_t), u'\0');
    for (std::size_t at = 0; at < text.size(); ++at) text[at] = UnitAt(units, at);
    return text;
  }

  /// The next `count` bytes, or none when the block holds fewer.
  [[nodiscard]] std::span<const std::byte> Take(std::size_t count) {
    if (!ok_ || count > remaining()) {
      ok_ = false;
      return {};
    }
    const std::span<const std::byte> taken = block_.subspan(position_, count);
    position_ += count;
    return taken;
  }

  /// Skips to the next multiple of 4 from the block's start, or to its end.
  void Align() { position_ = std::min((position_ + 3) & ~std::size_t{3}, block_.size()); }

 private:
  [[nodiscard]] static char16_t UnitAt(std::span<const std::byte> bytes, std::size_t at) {
    const auto low = static_cast<unsigned>(bytes[2 * at]);
    const auto high = static_cast<unsigned>(bytes[2 * at + 1]);
    return static_cast<char16_t>(low | high << 8);
  }

  std::span<const std::byte> block_;
  std::size_t position_ = 0;
  bool ok_ = true;
};

}  // namespace pelora::resources
