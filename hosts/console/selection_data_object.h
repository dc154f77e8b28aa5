// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string>
#include <vector>

#include "hosts/console/directory_browser.h"
#include "platform/data_object.h"

namespace pelora::console {

/// One object of a selection, as the block of a selection names it.
struct SelectedObject {
  /// ADsPath.
  std::string path;
  /// LDAP display name of the object's class.
  std::string object_class;
  bool is_container = false;
};

/// The selected objects as a `DSOBJECTNAMES` block: numbers little-endian, names and classes as
/// UTF-16 strings ended by 0 behind the entries.
[[nodiscard]] std::vector<std::byte> DsObjectNamesOf(std::span<const SelectedObject> objects);

/// Objects in the format `kDsObjectNamesFormat` and no other: one reference, the caller's.
[[nodiscard]] Ref<IDataObject> MakeObjectNames(std::span<const SelectedObject> objects);

/// The selection as the console hands it to extensions.
[[nodiscard]] Ref<IDataObject> MakeSelectionDataObject(std::span<const DirectoryObject> selection);

}  // namespace pelora::console
