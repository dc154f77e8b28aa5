// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include "hosts/console/choosers/object_search.h"

namespace pelora::console {

/// What the administrator reads of a search that goes on, and of one that has ended, with `count`
/// objects shown. Whether something is missing is always said.
[[nodiscard]] QString DescribeRunning(int count);
[[nodiscard]] QString DescribeEnd(const session::ListingEnd& ending, int count);

}  // namespace pelora::console
