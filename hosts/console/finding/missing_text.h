// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include "hosts/session/find/listing_end.h"

namespace pelora::console {

/// What of a pasted list there is not, to follow behind what there is: ", 1 not found: bob". Empty
/// when nothing is missing.
[[nodiscard]] QString MissingText(const session::ListingEnd& ending);

}  // namespace pelora::console
