// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace pelora::windows::test {

/// Pixels from the upper left, row by row, each 0x00RRGGBB.
struct Picture {
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  std::vector<std::uint32_t> pixels;
};

/// Writes a picture as a PNG file, without compression. False when the file cannot be written.
[[nodiscard]] bool WritePng(const std::wstring& path, const Picture& picture);

}  // namespace pelora::windows::test
