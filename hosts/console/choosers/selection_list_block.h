// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>

#include "hosts/console/block_data_object.h"
#include "hosts/console/directory_browser.h"

namespace pelora::console {

/// Chosen objects as a `DS_SELECTION_LIST` block: for each its name, path and class, found in the
/// joined domain; the strings lie behind the entries, in the block itself. No attributes are
/// fetched.
[[nodiscard]] HeapBlock SelectionListOf(std::span<const DirectoryObject> objects);

/// What an object picker hands over, in the format `kDsSelectionListFormat` and no other.
[[nodiscard]] Ref<IDataObject> MakeChosenDataObject(std::vector<DirectoryObject> objects);

}  // namespace pelora::console
