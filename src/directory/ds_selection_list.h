// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "directory/byte_block.h"
#include "platform/hresult.h"

namespace pelora {

/// Reads the paths out of a `DS_SELECTION_LIST` block, in order, as UTF-8.
///
/// The block, for 64-bit programs: the number of entries (32 bits, unsigned), the number of fetched
/// attributes (32 bits), then entries of 48 bytes whose second 64-bit field is the address of the
/// object's path, a UTF-16 string ended by 0; numbers are little-endian. The addresses are those of
/// the block as it lies in memory now, and each points into the block itself.
///
/// A block that is cut short, that counts more entries than it holds, or whose strings begin or end
/// outside it is `E_INVALIDARG`; nothing outside the block is read and `paths` is left empty.
[[nodiscard]] HRESULT ReadDsSelectionList(std::span<const std::byte> block,
                                          std::vector<std::string>& paths);

/// Gives the memory that can be read from an address on; empty when there is none.
using MemoryFrom = std::function<std::span<const std::byte>(std::uintptr_t address)>;

/// The same of a block whose strings may lie elsewhere: `elsewhere` is asked for what begins
/// outside the block. A string that begins in the block has to end there.
[[nodiscard]] HRESULT ReadScatteredSelectionList(std::span<const std::byte> block,
                                                 const MemoryFrom& elsewhere,
                                                 std::vector<std::string>& paths);

/// One chosen object, as the block names it; texts are UTF-8.
struct ChosenObject {
  /// ADsPath.
  std::string path;
  std::string name{};
  /// LDAP display name of the object's class.
  std::string object_class{};
};

/// Such a block of the objects, found in the joined domain: the strings stand behind the entries,
/// and no attributes are fetched. It may be moved, and its bytes stay where they are.
[[nodiscard]] HeapBlock MakeDsSelectionList(std::span<const ChosenObject> objects);

}  // namespace pelora
