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
    std::u16string text;
    while (ok_) {
      const auto unit = Read<std::uint16_t>();
      if (ok_ && unit == 0) return text;
      text.push_back(static_cast<char16_t>(unit));
    }
    return {};
  }

  [[nodiscard]] std::u16string ReadCounted(std::size_t length) {
    if (length > remaining() / sizeof(char16_t)) {
      ok_ = false;
      return {};
    }
    std::u16string text;
    text.reserve(length);
    while (text.size() < length) text.push_back(static_cast<char16_t>(Read<std::uint16_t>()));
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
  std::span<const std::byte> block_;
  std::size_t position_ = 0;
  bool ok_ = true;
};

}  // namespace pelora::resources
