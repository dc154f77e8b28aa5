// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>

namespace pelora::test {

/// The compiled resource file of resource_file_samples.rc.
[[nodiscard]] std::span<const std::byte> SampleResourceBytes();

}  // namespace pelora::test
