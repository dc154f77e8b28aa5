// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>

namespace pelora::testing {

/// How often memory is asked for while something is done, by whatever library: what it costs, told
/// by a number that does not depend on what else the machine does. Throws when nothing is counted.
[[nodiscard]] std::size_t MallocsOf(const std::function<void()>& action);

}  // namespace pelora::testing
