// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "hosts/resources/dialog_template.h"
#include "hosts/resources/resource_name.h"

namespace pelora::resources {

inline constexpr std::uint16_t kIconType = 3;
inline constexpr std::uint16_t kDialogType = 5;
inline constexpr std::uint16_t kStringTableType = 6;
inline constexpr std::uint16_t kGroupIconType = 14;

/// One entry of a compiled resource file. The data is a view into the file's bytes.
struct Resource {
  ResourceName type;
  ResourceName name;
  std::uint16_t language = 0;
  std::span<const std::byte> data;
};

/// The resources of a compiled resource file (.res), held as views into bytes that outlive it.
class ResourceFile {
 public:
  /// Reads the directory of a file. Nothing outside `data` is read; an entry that is cut short
  /// refuses the whole file.
  [[nodiscard]] static ReadResult<ResourceFile> Read(std::span<const std::byte> data);

  /// Takes the resources of another file in behind its own, as views into that one's bytes.
  void Append(const ResourceFile& other) {
    for (const Resource& resource : other.resources_) Take(resource);
  }

  [[nodiscard]] const std::vector<Resource>& resources() const { return resources_; }
  /// The first resource of that type and name, in whatever language; nothing when there is none.
  [[nodiscard]] std::optional<Resource> Find(const ResourceName& type,
                                             const ResourceName& name) const;
  [[nodiscard]] ReadResult<DialogTemplate> Dialog(std::uint16_t id) const;
  /// The same without a copy, for as long as the object lives; null when it cannot be read.
  [[nodiscard]] const DialogTemplate* FindDialog(std::uint16_t id) const;
  /// String `id` of the string table, in UTF-8; nothing when there is none.
  [[nodiscard]] std::optional<std::string> StringEntry(std::uint16_t id) const;

 private:
  void Take(Resource resource);

  std::vector<Resource> resources_;
  /// Read once: a page for each of many objects is made from the same one.
  std::map<std::uint16_t, ReadResult<DialogTemplate>> dialogs_;
};

/// The module's own resources, compiled from `src/resources/pelora.rc` into this program.
[[nodiscard]] std::span<const std::byte> EmbeddedResourceBytes();

}  // namespace pelora::resources
