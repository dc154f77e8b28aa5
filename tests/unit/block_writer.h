// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

namespace pelora::test {

/// Builds a block of little-endian numbers and UTF-16 strings, for readers to be tried on.
class BlockWriter {
 public:
  template <std::integral T>
  BlockWriter& Put(T value) {
    for (std::size_t byte = 0; byte < sizeof(T); ++byte) {
      bytes_.push_back(static_cast<std::byte>(static_cast<std::uint64_t>(value) >> (8 * byte)));
    }
    return *this;
  }
  /// A string with its ending 0.
  BlockWriter& PutText(std::u16string_view text) {
    for (const char16_t unit : text) Put(static_cast<std::uint16_t>(unit));
    return Put(std::uint16_t{0});
  }
  /// A number where a name may stand.
  BlockWriter& PutOrdinal(std::uint16_t number) { return Put(std::uint16_t{0xFFFF}).Put(number); }
  BlockWriter& PutBytes(std::span<const std::byte> bytes) {
    bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
    return *this;
  }
  BlockWriter& Align() {
    while (bytes_.size() % 4 != 0) bytes_.push_back(std::byte{0});
    return *this;
  }

  [[nodiscard]] const std::vector<std::byte>& bytes() const { return bytes_; }

 private:
  std::vector<std::byte> bytes_;
};

/// Calls `try_it` with a copy of `bytes` in a heap block of exactly their size, so that the address
/// sanitizer sees every read outside.
inline void TryExactly(std::span<const std::byte> bytes,
                       const std::function<void(std::span<const std::byte>)>& try_it) {
  const auto block = std::make_unique<std::byte[]>(bytes.size());
  std::ranges::copy(bytes, block.get());
  try_it({block.get(), bytes.size()});
}

}  // namespace pelora::test
