// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>

#include "directory/byte_block.h"
#include "platform/data_object.h"

namespace pelora {

/// A data object that is rendered in one format: each rendering is a block that `render` makes
/// anew. Whoever asked for it may release it; a block that nobody releases goes with the data
/// object. One reference, the caller's.
[[nodiscard]] Ref<IDataObject> MakeBlockDataObject(std::string format,
                                                   std::function<HeapBlock()> render);

}  // namespace pelora
