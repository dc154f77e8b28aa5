// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/support/png_writer.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <string_view>

namespace pelora::windows::test {
namespace {

using Bytes = std::string;

void AppendNumber(Bytes& bytes, std::uint32_t number) {
  for (const int shift : {24, 16, 8, 0}) bytes += static_cast<char>((number >> shift) & 0xFFU);
}

std::uint32_t Crc(std::string_view bytes) {
  constexpr std::uint32_t kPolynomial = 0xEDB88320;
  std::uint32_t crc = 0xFFFFFFFF;
  for (const char byte : bytes) {
    crc ^= static_cast<unsigned char>(byte);
    for (int bit = 0; bit < 8; ++bit) crc = (crc & 1U) != 0 ? (crc >> 1) ^ kPolynomial : crc >> 1;
  }
  return ~crc;
}

std::uint32_t Adler(std::string_view bytes) {
  constexpr std::uint32_t kModulus = 65521;
  std::uint32_t low = 1;
  std::uint32_t high = 0;
  for (const char byte : bytes) {
    low = (low + static_cast<unsigned char>(byte)) % kModulus;
    high = (high + low) % kModulus;
  }
  return (high << 16) | low;
}

void AppendChunk(Bytes& file, std::string_view type, std::string_view data) {
  AppendNumber(file, static_cast<std::uint32_t>(data.size()));
  const Bytes body = Bytes(type) + Bytes(data);
  file += body;
  AppendNumber(file, Crc(body));
}

/// A zlib stream of stored blocks.
Bytes Store(std::string_view data) {
  constexpr std::size_t kLargestBlock = 65535;
  Bytes stream = "\x78\x01";
  std::string_view rest = data;
  do {
    const std::string_view block = rest.substr(0, kLargestBlock);
    rest.remove_prefix(block.size());
    const auto size = static_cast<std::uint16_t>(block.size());
    stream += static_cast<char>(rest.empty() ? 1 : 0);
    for (const unsigned int half : {unsigned{size}, ~unsigned{size}}) {
      stream += static_cast<char>(half & 0xFFU);
      stream += static_cast<char>((half >> 8) & 0xFFU);
    }
    stream += block;
  } while (!rest.empty());
  AppendNumber(stream, Adler(data));
  return stream;
}

Bytes Rows(const Picture& picture) {
  Bytes rows;
  for (std::uint32_t row = 0; row < picture.height; ++row) {
    rows += '\0';
    for (std::uint32_t column = 0; column < picture.width; ++column) {
      const std::uint32_t pixel = picture.pixels[std::size_t{row} * picture.width + column];
      for (const int shift : {16, 8, 0}) rows += static_cast<char>((pixel >> shift) & 0xFFU);
    }
  }
  return rows;
}

}  // namespace

bool WritePng(const std::wstring& path, const Picture& picture) {
  Bytes header;
  AppendNumber(header, picture.width);
  AppendNumber(header, picture.height);
  // 8 bits a channel, colours, and the only methods that there are.
  header += Bytes("\x08\x02\x00\x00\x00", 5);
  Bytes file("\x89PNG\r\n\x1A\n", 8);
  AppendChunk(file, "IHDR", header);
  AppendChunk(file, "IDAT", Store(Rows(picture)));
  AppendChunk(file, "IEND", "");
  std::ofstream out(std::filesystem::path(path), std::ios::binary);
  out.write(file.data(), static_cast<std::streamsize>(file.size()));
  return out.good();
}

}  // namespace pelora::windows::test
