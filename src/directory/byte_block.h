// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace pelora {

/// Bytes on the heap, aligned for any type; their address stays when the block is moved. A new one
/// is filled with 0.
struct HeapBlock {
  HeapBlock() = default;
  explicit HeapBlock(std::size_t block_size)
      : bytes(std::make_unique<std::byte[]>(block_size)), size(block_size) {}

  std::unique_ptr<std::byte[]> bytes;
  std::size_t size = 0;

  [[nodiscard]] std::span<std::byte> span() const { return {bytes.get(), size}; }
};

/// Numbers in a block of memory from another program, little-endian and not necessarily aligned.
/// The number has to lie inside the block.
[[nodiscard]] std::uint32_t ReadUint32(std::span<const std::byte> block, std::size_t offset);
[[nodiscard]] std::uint64_t ReadUint64(std::span<const std::byte> block, std::size_t offset);

/// The UTF-16 string, ended by 0, at any offset, as UTF-8. Nothing when it does not begin and end
/// inside the block.
[[nodiscard]] std::optional<std::string> ReadWideString(std::span<const std::byte> block,
                                                        std::size_t offset);

/// The same, written. What is written has to lie inside the block.
void WriteUint32(std::span<std::byte> block, std::size_t offset, std::uint32_t number);
void WriteUint64(std::span<std::byte> block, std::size_t offset, std::uint64_t number);
/// Writes a text (UTF-8) as UTF-16 with its ending 0; gives the offset behind it.
std::size_t WriteWideString(std::span<std::byte> block, std::size_t offset, std::string_view text);
/// How many bytes that takes.
[[nodiscard]] std::size_t WideStringSize(std::string_view text);

}  // namespace pelora
