// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/data_object.h"

namespace pelora {

/// Reads what a chooser's data object holds: the paths of the chosen objects, in order.
///
/// `format` is `kDsSelectionListFormat` or `kDsObjectNamesFormat`. The memory that the data object
/// hands out is released in any case. No data object (the choice was cancelled), another format and
/// a malformed block are `E_INVALIDARG`; memory that cannot be reached is `E_POINTER`; a rendering
/// that fails gives its own status. After a failure `paths` is empty.
[[nodiscard]] HRESULT ReadSelection(IDataObject* chosen, std::string_view format,
                                    std::vector<std::string>& paths);

}  // namespace pelora
