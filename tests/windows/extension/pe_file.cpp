// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/extension/pe_file.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string_view>

#include "hosts/windows/system_headers.h"

namespace pelora::windows::test {
namespace {

class Image {
 public:
  explicit Image(const std::wstring& path) {
    std::ifstream file(std::filesystem::path(path), std::ios::binary);
    bytes_.assign(std::istreambuf_iterator<char>(file), {});
    const auto dos = At<IMAGE_DOS_HEADER>(0);
    head_ = static_cast<std::size_t>(dos.e_lfanew);
    headers_ = At<IMAGE_NT_HEADERS64>(head_);
    if (dos.e_magic != IMAGE_DOS_SIGNATURE || headers_.Signature != IMAGE_NT_SIGNATURE ||
        headers_.OptionalHeader.Magic != IMAGE_NT_OPTIONAL_HDR64_MAGIC) {
      throw std::runtime_error("no 64-bit module");
    }
    const std::size_t first = head_ + offsetof(IMAGE_NT_HEADERS64, OptionalHeader) +
                              headers_.FileHeader.SizeOfOptionalHeader;
    for (std::size_t index = 0; index < headers_.FileHeader.NumberOfSections; ++index) {
      sections_.push_back(At<IMAGE_SECTION_HEADER>(first + index * sizeof(IMAGE_SECTION_HEADER)));
    }
  }

  [[nodiscard]] std::size_t size() const { return bytes_.size(); }
  [[nodiscard]] const IMAGE_NT_HEADERS64& headers() const { return headers_; }
  [[nodiscard]] const std::vector<IMAGE_SECTION_HEADER>& sections() const { return sections_; }
  [[nodiscard]] std::size_t Directory(std::size_t number) const {
    return headers_.OptionalHeader.DataDirectory[number].VirtualAddress;
  }

  template <class T>
  [[nodiscard]] T At(std::size_t offset) const {
    if (offset + sizeof(T) > bytes_.size()) throw std::runtime_error("cut short");
    T value;
    std::memcpy(&value, &bytes_[offset], sizeof(T));
    return value;
  }
  template <class T>
  [[nodiscard]] T AtAddress(std::size_t address) const {
    return At<T>(OffsetOf(address));
  }
  [[nodiscard]] std::string TextAtAddress(std::size_t address) const {
    return {&bytes_[OffsetOf(address)]};
  }

 private:
  [[nodiscard]] std::size_t OffsetOf(std::size_t address) const {
    for (const IMAGE_SECTION_HEADER& section : sections_) {
      const std::size_t begin = section.VirtualAddress;
      if (address >= begin && address < begin + section.SizeOfRawData) {
        return address - begin + section.PointerToRawData;
      }
    }
    throw std::runtime_error("an address lies in no section");
  }

  std::vector<char> bytes_;
  std::size_t head_ = 0;
  IMAGE_NT_HEADERS64 headers_{};
  std::vector<IMAGE_SECTION_HEADER> sections_;
};

void ReadExports(const Image& image, PeFile& file) {
  const std::size_t directory = image.Directory(IMAGE_DIRECTORY_ENTRY_EXPORT);
  if (directory == 0) return;
  const auto exports = image.AtAddress<IMAGE_EXPORT_DIRECTORY>(directory);
  file.export_count = exports.NumberOfFunctions;
  for (DWORD index = 0; index < exports.NumberOfNames; ++index) {
    const auto name = image.AtAddress<DWORD>(exports.AddressOfNames + index * sizeof(DWORD));
    file.exports.push_back(image.TextAtAddress(name));
  }
}

void ReadImports(const Image& image, PeFile& file) {
  std::size_t directory = image.Directory(IMAGE_DIRECTORY_ENTRY_IMPORT);
  if (directory == 0) return;
  while (true) {
    const auto import = image.AtAddress<IMAGE_IMPORT_DESCRIPTOR>(directory);
    if (import.Name == 0) return;
    std::string name = image.TextAtAddress(import.Name);
    std::ranges::transform(name, name.begin(), [](unsigned char letter) {
      return static_cast<char>(std::toupper(letter));
    });
    file.imports.push_back(name);
    directory += sizeof(import);
  }
}

void CountRelocations(const Image& image, PeFile& file) {
  const auto& directory =
      image.headers().OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_BASERELOC];
  std::size_t at = 0;
  while (at < directory.Size) {
    const auto block = image.AtAddress<IMAGE_BASE_RELOCATION>(directory.VirtualAddress + at);
    if (block.SizeOfBlock == 0) return;
    at += block.SizeOfBlock;
    ++file.relocation_blocks;
  }
}

/// The code of a module, with the addresses at which it will stand.
std::string CodeOf(const Image& image, std::size_t& address) {
  for (const IMAGE_SECTION_HEADER& section : image.sections()) {
    if ((section.Characteristics & IMAGE_SCN_MEM_EXECUTE) == 0) continue;
    address = section.VirtualAddress;
    std::string code;
    for (std::size_t at = 0; at < section.SizeOfRawData; ++at) {
      code += image.At<char>(section.PointerToRawData + at);
    }
    return code;
  }
  return {};
}

/// "mov ecx, 2; int 29h": the end of a process whose stack check failed.
constexpr std::string_view kFailedStackCheck("\xB9\x02\x00\x00\x00\xCD\x29", 7);
/// A call of what lies so many bytes behind it.
constexpr char kCall = '\xE8';

void CountStackChecks(const Image& image, PeFile& file) {
  std::size_t address = 0;
  const std::string code = CodeOf(image, address);
  const std::size_t failed = code.find(kFailedStackCheck);
  if (failed == std::string::npos) return;
  for (std::size_t at = 0; at + 5 <= code.size(); ++at) {
    if (code[at] != kCall) continue;
    std::int32_t distance = 0;
    std::memcpy(&distance, &code[at + 1], sizeof(distance));
    const auto target = static_cast<std::ptrdiff_t>(at + 5) + distance;
    // The function may begin with a few bytes of its own.
    const std::ptrdiff_t before = static_cast<std::ptrdiff_t>(failed) - target;
    if (before >= 0 && before <= 16) ++file.stack_checks;
  }
}

}  // namespace

PeFile ReadPeFile(const std::wstring& path) {
  const Image image(path);
  PeFile file;
  file.size = image.size();
  file.machine = image.headers().FileHeader.Machine;
  file.characteristics = image.headers().FileHeader.Characteristics;
  file.dll_characteristics = image.headers().OptionalHeader.DllCharacteristics;
  file.symbol_count = image.headers().FileHeader.NumberOfSymbols;
  for (const IMAGE_SECTION_HEADER& section : image.sections()) {
    const auto* const name = reinterpret_cast<const char*>(section.Name);
    file.sections.emplace_back(name, strnlen(name, sizeof(section.Name)));
  }
  ReadExports(image, file);
  ReadImports(image, file);
  CountRelocations(image, file);
  CountStackChecks(image, file);
  return file;
}

}  // namespace pelora::windows::test
