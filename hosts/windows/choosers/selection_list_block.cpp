// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/choosers/selection_list_block.h"

#include <cstring>
#include <functional>
#include <optional>
#include <string>

#include "directory/byte_block.h"
#include "hosts/windows/choosers/chooser_headers.h"
#include "hosts/windows/values/wide_text.h"

namespace pelora::windows {
namespace {

constexpr std::size_t kHeadSize = offsetof(DS_SELECTION_LIST, aDsSelection);
static_assert(kHeadSize == 8 && sizeof(DS_SELECTION) == 48);

constexpr DWORD kReadable = PAGE_READONLY | PAGE_READWRITE | PAGE_WRITECOPY | PAGE_EXECUTE_READ |
                            PAGE_EXECUTE_READWRITE | PAGE_EXECUTE_WRITECOPY;

/// Memory from an address on that can be read; empty when there is none.
std::span<const std::byte> ReadableFrom(const std::byte* address) {
  MEMORY_BASIC_INFORMATION region = {};
  if (VirtualQuery(address, &region, sizeof(region)) == 0) return {};
  const bool is_readable = region.State == MEM_COMMIT && (region.Protect & kReadable) != 0 &&
                           (region.Protect & PAGE_GUARD) == 0;
  if (!is_readable) return {};
  return {address, static_cast<const std::byte*>(region.BaseAddress) + region.RegionSize};
}

/// Memory from an address on: up to the end of the list for one in the list.
std::span<const std::byte> MemoryFrom(const std::byte* address, std::span<const std::byte> list) {
  const std::byte* const end = list.data() + list.size();
  const bool is_inside =
      std::greater_equal<>()(address, list.data()) && std::less<>()(address, end);
  return is_inside ? std::span(address, end) : ReadableFrom(address);
}

/// The entries' paths, in order; nothing when one of them cannot be read.
std::optional<std::vector<std::wstring>> ReadPaths(std::span<const std::byte> list,
                                                   std::size_t count) {
  std::vector<std::wstring> paths;
  paths.reserve(count);
  for (std::size_t entry = 0; entry < count; ++entry) {
    DS_SELECTION selected;
    std::memcpy(&selected, list.data() + kHeadSize + entry * sizeof(selected), sizeof(selected));
    const auto* const address = reinterpret_cast<const std::byte*>(selected.pwzADsPath);
    const std::optional<std::string> path = ReadWideString(MemoryFrom(address, list), 0);
    if (!path) return std::nullopt;
    paths.push_back(ToWide(*path));
  }
  return paths;
}

std::vector<std::byte> MakeBlock(const std::vector<std::wstring>& paths) {
  std::size_t size = kHeadSize + paths.size() * sizeof(DS_SELECTION);
  std::size_t place = size;
  for (const std::wstring& path : paths) size += (path.size() + 1) * sizeof(wchar_t);

  std::vector<std::byte> block(size);
  const auto count = static_cast<ULONG>(paths.size());
  std::memcpy(block.data() + offsetof(DS_SELECTION_LIST, cItems), &count, sizeof(count));
  std::byte* entry = block.data() + kHeadSize;
  for (const std::wstring& path : paths) {
    DS_SELECTION selected = {};
    selected.pwzADsPath = reinterpret_cast<wchar_t*>(block.data() + place);
    std::memcpy(entry, &selected, sizeof(selected));
    const std::size_t path_size = (path.size() + 1) * sizeof(wchar_t);
    std::memcpy(block.data() + place, path.c_str(), path_size);
    entry += sizeof(selected);
    place += path_size;
  }
  return block;
}

}  // namespace

HRESULT GatherSelectionList(std::span<const std::byte> list, std::vector<std::byte>& block) {
  block.clear();
  if (list.size() < kHeadSize) return E_INVALIDARG;
  const std::size_t count = ReadUint32(list, offsetof(DS_SELECTION_LIST, cItems));
  if (count > (list.size() - kHeadSize) / sizeof(DS_SELECTION)) return E_INVALIDARG;
  const std::optional<std::vector<std::wstring>> paths = ReadPaths(list, count);
  if (!paths) return E_INVALIDARG;
  block = MakeBlock(*paths);
  return S_OK;
}

}  // namespace pelora::windows
