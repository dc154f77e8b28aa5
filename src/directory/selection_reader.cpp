// SPDX-License-Identifier: Apache-2.0
#include "directory/selection_reader.h"

#include <algorithm>
#include <array>
#include <memory>

#include "directory/ds_object_names.h"
#include "directory/ds_selection_list.h"
#include "directory/locked_medium.h"

namespace pelora {
namespace {

struct BlockFormat {
  std::string_view name;
  HRESULT (*read)(std::span<const std::byte> block, std::vector<std::string>& paths);
};

constexpr std::array kBlockFormats = {
    BlockFormat{kDsSelectionListFormat, &ReadDsSelectionList},
    BlockFormat{kDsObjectNamesFormat, &ReadDsObjectNames},
};

}  // namespace

HRESULT ReadSelection(IDataObject* chosen, std::string_view format,
                      std::vector<std::string>& paths) {
  paths.clear();
  if (chosen == nullptr) return E_INVALIDARG;
  std::unique_ptr<IStorageMedium> medium;
  const HRESULT rendered = chosen->GetData({.format = std::string(format)}, medium);
  if (FAILED(rendered)) return rendered;
  if (medium == nullptr) return E_UNEXPECTED;

  const LockedMedium locked(*medium);
  if (!locked.IsReachable()) return E_POINTER;
  const auto* const known = std::ranges::find(kBlockFormats, format, &BlockFormat::name);
  return known == kBlockFormats.end() ? E_INVALIDARG : known->read(locked.block(), paths);
}

}  // namespace pelora
