// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "directory/byte_block.h"
#include "platform/hresult.h"

namespace pelora {

/// Reads the paths out of a `DSOBJECTNAMES` block, in order, as UTF-8.
///
/// The block: 16 bytes of class identifier, the number of entries (32 bits, unsigned), then entries
/// of 16 bytes whose third 32-bit field is the offset, from the start of the block, of the object's
/// path, a UTF-16 string ended by 0; numbers are little-endian. Offsets need not be even.
///
/// A block that is cut short, that counts more entries than it holds, or whose strings begin or end
/// outside it is `E_INVALIDARG`; nothing outside the block is read and `paths` is left empty.
[[nodiscard]] HRESULT ReadDsObjectNames(std::span<const std::byte> block,
                                        std::vector<std::string>& paths);

/// One object of a selection, as the block names it; texts are UTF-8.
struct SelectedObject {
  /// ADsPath.
  std::string path;
  /// LDAP display name of the object's class.
  std::string object_class{};
  bool is_container = false;
};

/// Such a block of the objects: paths and classes stand behind the entries.
[[nodiscard]] HeapBlock MakeDsObjectNames(std::span<const SelectedObject> objects);

}  // namespace pelora
