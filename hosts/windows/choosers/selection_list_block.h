// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>

#include "directory/byte_block.h"
#include "platform/hresult.h"

namespace pelora::windows {

/// Copies a `DS_SELECTION_LIST` of the system's into one block that holds its strings too: the
/// system's list may point to strings anywhere in memory. Of each entry the path is copied, and
/// nothing else; `list` is the whole memory of the system's list.
///
/// `E_INVALIDARG` for a list that is cut short or counts more entries than it holds, and for a path
/// that is missing, begins in the list and does not end in it, or lies in memory that cannot be
/// read; `block` is empty then.
[[nodiscard]] HRESULT GatherSelectionList(std::span<const std::byte> list, HeapBlock& block);

}  // namespace pelora::windows
