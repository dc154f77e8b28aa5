// SPDX-License-Identifier: Apache-2.0
#include "hosts/resources/resource_file.h"

#include <algorithm>
#include <utility>

#include "hosts/resources/block_reader.h"
#include "hosts/resources/resource_name.h"

namespace pelora::resources {
namespace {

/// An entry's two sizes stand before its header's other fields and count as part of it.
constexpr std::size_t kSizesLength = 8;
constexpr std::size_t kStringsPerBlock = 16;

struct Entry {
  Resource resource;
  std::string error;
};

Entry Cut(const char* what) {
  return {{}, std::string("The resource file is cut short in ") + what};
}

/// Reads one entry, with the bytes that fill it up to a multiple of 4.
Entry ReadEntry(BlockReader& file) {
  const auto data_size = file.Read<std::uint32_t>();
  const auto header_size = file.Read<std::uint32_t>();
  if (!file.ok()) return Cut("the sizes of an entry.");
  if (header_size < kSizesLength || header_size % 4 != 0) {
    return {{}, "The resource file has an entry whose header has no possible size."};
  }
  BlockReader header(file.Take(header_size - kSizesLength));
  if (!file.ok()) return Cut("the header of an entry.");
  Entry entry;
  entry.resource.type = ReadNumberOrString(header);
  entry.resource.name = ReadNumberOrString(header);
  header.Align();
  (void)header.Read<std::uint32_t>();  // data version
  (void)header.Read<std::uint16_t>();  // memory flags
  entry.resource.language = header.Read<std::uint16_t>();
  (void)header.Read<std::uint32_t>();  // version
  (void)header.Read<std::uint32_t>();  // characteristics
  if (!header.ok()) {
    return {{}, "The resource file has an entry whose header does not fit its size."};
  }
  entry.resource.data = file.Take(data_size);
  if (!file.ok()) return Cut("the data of an entry.");
  file.Align();
  return entry;
}

/// Every resource file starts with an entry of type 0 and name 0 without data, by which it is
/// known.
bool IsMark(const Resource& resource) {
  const ResourceName zero = std::uint16_t{0};
  return resource.type == zero && resource.name == zero && resource.data.empty();
}

}  // namespace

ReadResult<ResourceFile> ResourceFile::Read(std::span<const std::byte> data) {
  BlockReader reader(data);
  ResourceFile file;
  bool marked = false;
  do {
    Entry entry = ReadEntry(reader);
    if (!entry.error.empty()) return {std::nullopt, std::move(entry.error)};
    if (marked) {
      file.Take(std::move(entry.resource));
    } else if (!IsMark(entry.resource)) {
      return {std::nullopt, "The file is not a compiled resource file."};
    }
    marked = true;
  } while (reader.remaining() > 0);
  return {std::move(file), {}};
}

std::optional<Resource> ResourceFile::Find(const ResourceName& type,
                                           const ResourceName& name) const {
  const auto found = std::ranges::find_if(resources_, [&](const Resource& resource) {
    return resource.type == type && resource.name == name;
  });
  if (found == resources_.end()) return std::nullopt;
  return *found;
}

void ResourceFile::Take(Resource resource) {
  const auto* const id = std::get_if<std::uint16_t>(&resource.name);
  // The first of a number counts, as in `Find`.
  if (resource.type == ResourceName(kDialogType) && id != nullptr && !dialogs_.contains(*id)) {
    dialogs_.emplace(*id, ReadDialogTemplate(resource.data));
  }
  resources_.push_back(std::move(resource));
}

ReadResult<DialogTemplate> ResourceFile::Dialog(std::uint16_t id) const {
  const auto found = dialogs_.find(id);
  if (found != dialogs_.end()) return found->second;
  return {std::nullopt, "There is no dialog template " + std::to_string(id) + "."};
}

const DialogTemplate* ResourceFile::FindDialog(std::uint16_t id) const {
  const auto found = dialogs_.find(id);
  if (found == dialogs_.end() || !found->second.value) return nullptr;
  return &*found->second.value;
}

std::optional<std::string> ResourceFile::StringEntry(std::uint16_t id) const {
  const auto block_number = static_cast<std::uint16_t>(id / kStringsPerBlock + 1);
  const std::optional<Resource> resource = Find(kStringTableType, block_number);
  if (!resource) return std::nullopt;
  BlockReader block(resource->data);
  for (std::size_t before = 0; before < id % kStringsPerBlock; ++before) {
    (void)block.ReadCounted(block.Read<std::uint16_t>());
  }
  // Where the block is cut short nothing is read.
  const std::u16string text = block.ReadCounted(block.Read<std::uint16_t>());
  if (text.empty()) return std::nullopt;
  return ToUtf8(text);
}

}  // namespace pelora::resources
