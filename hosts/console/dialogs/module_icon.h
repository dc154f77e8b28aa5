// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPixmap>

#include "hosts/resources/resource_file.h"

namespace pelora::console {

/// The icon resource of a number in the size that comes nearest to `height` pixels, drawn at that
/// height. Null when there is none or it cannot be read.
[[nodiscard]] QPixmap ReadModuleIcon(const resources::ResourceFile& module, std::uint16_t number,
                                     int height);

}  // namespace pelora::console
