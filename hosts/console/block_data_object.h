// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <span>
#include <string>

#include "platform/data_object.h"

namespace pelora::console {

/// Bytes on the heap, aligned for any type; their address stays when the block is moved.
struct HeapBlock {
  std::unique_ptr<std::byte[]> bytes;
  std::size_t size = 0;

  [[nodiscard]] std::span<std::byte> span() const { return {bytes.get(), size}; }
};

/// A data object that is rendered in one format: each rendering is a block that `render` makes
/// anew. Whoever asked for it may release it; a block that nobody releases goes with the data
/// object. One reference, the caller's.
[[nodiscard]] Ref<IDataObject> MakeBlockDataObject(std::string format,
                                                   std::function<HeapBlock()> render);

}  // namespace pelora::console
