// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace pelora {

/// Numbers in a block of memory from another program, little-endian and not necessarily aligned.
/// The number has to lie inside the block.
[[nodiscard]] std::uint32_t ReadUint32(std::span<const std::byte> block, std::size_t offset);
[[nodiscard]] std::uint64_t ReadUint64(std::span<const std::byte> block, std::size_t offset);

/// The UTF-16 string, ended by 0, at any offset, as UTF-8. Nothing when it does not begin and end
/// inside the block.
[[nodiscard]] std::optional<std::string> ReadWideString(std::span<const std::byte> block,
                                                        std::size_t offset);

}  // namespace pelora
