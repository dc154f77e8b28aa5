// SPDX-License-Identifier: Apache-2.0
#include "directory/ds_object_names.h"

#include <optional>
#include <utility>

namespace pelora {
namespace {

constexpr std::size_t kCountOffset = 16;
constexpr std::size_t kFirstEntryOffset = 20;
constexpr std::size_t kEntrySize = 16;
constexpr std::size_t kFlagsInEntry = 0;
constexpr std::size_t kNameOffsetInEntry = 8;
constexpr std::size_t kClassOffsetInEntry = 12;
constexpr std::uint32_t kIsContainer = 1;

}  // namespace

HRESULT ReadDsObjectNames(std::span<const std::byte> block, std::vector<std::string>& paths) {
  paths.clear();
  if (block.size() < kFirstEntryOffset) return E_INVALIDARG;
  const std::size_t count = ReadUint32(block, kCountOffset);
  // Divided rather than multiplied: no count can overflow the comparison.
  if (count > (block.size() - kFirstEntryOffset) / kEntrySize) return E_INVALIDARG;

  std::vector<std::string> read;
  read.reserve(count);
  for (std::size_t entry = 0; entry < count; ++entry) {
    const std::size_t name_offset =
        ReadUint32(block, kFirstEntryOffset + entry * kEntrySize + kNameOffsetInEntry);
    std::optional<std::string> name = ReadWideString(block, name_offset);
    if (!name) return E_INVALIDARG;
    read.push_back(*std::move(name));
  }
  paths = std::move(read);
  return S_OK;
}

HeapBlock MakeDsObjectNames(std::span<const SelectedObject> objects) {
  std::size_t string = kFirstEntryOffset + kEntrySize * objects.size();
  std::size_t size = string;
  for (const SelectedObject& object : objects) {
    size += WideStringSize(object.path) + WideStringSize(object.object_class);
  }
  HeapBlock block(size);
  WriteUint32(block.span(), kCountOffset, static_cast<std::uint32_t>(objects.size()));
  std::size_t entry = kFirstEntryOffset;
  for (const SelectedObject& object : objects) {
    WriteUint32(block.span(), entry + kFlagsInEntry, object.is_container ? kIsContainer : 0);
    WriteUint32(block.span(), entry + kNameOffsetInEntry, static_cast<std::uint32_t>(string));
    string = WriteWideString(block.span(), string, object.path);
    WriteUint32(block.span(), entry + kClassOffsetInEntry, static_cast<std::uint32_t>(string));
    string = WriteWideString(block.span(), string, object.object_class);
    entry += kEntrySize;
  }
  return block;
}

}  // namespace pelora
