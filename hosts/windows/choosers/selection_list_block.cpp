// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/choosers/selection_list_block.h"

#include <string>
#include <utility>
#include <vector>

#include "directory/ds_selection_list.h"
#include "hosts/windows/choosers/chooser_headers.h"

namespace pelora::windows {
namespace {

// The system's list is laid out as the block that is read and made.
static_assert(offsetof(DS_SELECTION_LIST, aDsSelection) == 8 && sizeof(DS_SELECTION) == 48 &&
              offsetof(DS_SELECTION, pwzADsPath) == 8);

constexpr DWORD kReadable = PAGE_READONLY | PAGE_READWRITE | PAGE_WRITECOPY | PAGE_EXECUTE_READ |
                            PAGE_EXECUTE_READWRITE | PAGE_EXECUTE_WRITECOPY;

/// Memory from an address on that can be read; empty when there is none.
std::span<const std::byte> ReadableFrom(std::uintptr_t place) {
  const auto* const address = reinterpret_cast<const std::byte*>(place);
  MEMORY_BASIC_INFORMATION region = {};
  if (VirtualQuery(address, &region, sizeof(region)) == 0) return {};
  const bool is_readable = region.State == MEM_COMMIT && (region.Protect & kReadable) != 0 &&
                           (region.Protect & PAGE_GUARD) == 0;
  if (!is_readable) return {};
  return {address, static_cast<const std::byte*>(region.BaseAddress) + region.RegionSize};
}

}  // namespace

HRESULT GatherSelectionList(std::span<const std::byte> list, HeapBlock& block) {
  block = {};
  std::vector<std::string> paths;
  const HRESULT status = ReadScatteredSelectionList(list, &ReadableFrom, paths);
  if (FAILED(status)) return status;
  std::vector<ChosenObject> objects;
  objects.reserve(paths.size());
  for (std::string& path : paths) objects.push_back({.path = std::move(path)});
  block = MakeDsSelectionList(objects);
  return S_OK;
}

}  // namespace pelora::windows
