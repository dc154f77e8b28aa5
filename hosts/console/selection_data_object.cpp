// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/selection_data_object.h"

#include <cstring>
#include <memory>
#include <utility>

#include "directory/utf.h"
#include "hosts/console/block_data_object.h"
#include "hosts/ldap/ads_path.h"

namespace pelora::console {
namespace {

constexpr std::size_t kNamespaceSize = 16;
constexpr std::size_t kEntrySize = 16;
constexpr std::size_t kFirstEntry = kNamespaceSize + sizeof(std::uint32_t);
constexpr std::uint32_t kIsContainer = 1;

void AppendUint32(std::vector<std::byte>& block, std::size_t number) {
  for (int shift = 0; shift < 32; shift += 8) {
    block.push_back(static_cast<std::byte>((number >> shift) & 0xFF));
  }
}

/// A string's bytes with the ending 0.
std::vector<std::byte> WideBytes(std::string_view text) {
  std::vector<std::byte> bytes;
  const std::u16string wide = ToUtf16(text) + u'\0';
  bytes.reserve(2 * wide.size());
  for (const char16_t unit : wide) {
    bytes.push_back(static_cast<std::byte>(unit & 0xFF));
    bytes.push_back(static_cast<std::byte>(unit >> 8));
  }
  return bytes;
}

/// A copy of the block.
HeapBlock CopyOf(const std::vector<std::byte>& block) {
  HeapBlock copy{std::make_unique<std::byte[]>(block.size()), block.size()};
  std::memcpy(copy.bytes.get(), block.data(), block.size());
  return copy;
}

}  // namespace

std::vector<std::byte> DsObjectNamesOf(std::span<const SelectedObject> objects) {
  std::vector<std::byte> block(kNamespaceSize);
  std::vector<std::byte> strings;
  const std::size_t first_string = kFirstEntry + kEntrySize * objects.size();
  const auto append_string = [&](std::string_view text) {
    const std::vector<std::byte> bytes = WideBytes(text);
    AppendUint32(block, first_string + strings.size());
    strings.insert(strings.end(), bytes.begin(), bytes.end());
  };
  AppendUint32(block, objects.size());
  for (const SelectedObject& object : objects) {
    constexpr std::uint32_t kProviderFlags = 0;
    AppendUint32(block, object.is_container ? kIsContainer : 0);
    AppendUint32(block, kProviderFlags);
    append_string(object.path);
    append_string(object.object_class);
  }
  block.insert(block.end(), strings.begin(), strings.end());
  return block;
}

Ref<IDataObject> MakeObjectNames(std::span<const SelectedObject> objects) {
  return MakeBlockDataObject(kDsObjectNamesFormat,
                             [block = DsObjectNamesOf(objects)] { return CopyOf(block); });
}

Ref<IDataObject> MakeSelectionDataObject(std::span<const DirectoryObject> selection) {
  std::vector<SelectedObject> objects;
  objects.reserve(selection.size());
  for (const DirectoryObject& object : selection) {
    objects.push_back({.path = ldap::AdsPathOf(object.dn),
                       .object_class = object.kind.class_name,
                       .is_container = object.kind.is_container});
  }
  return MakeObjectNames(objects);
}

}  // namespace pelora::console
