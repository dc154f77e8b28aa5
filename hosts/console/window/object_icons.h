// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QIcon>

#include "hosts/session/object_class.h"

namespace pelora::console {

/// The picture of a kind of object. It is drawn when it is needed, in the colours of the desktop's
/// palette and at any size; kinds differ in shape, not in colour alone.
[[nodiscard]] QIcon IconOf(session::ObjectIcon icon);

}  // namespace pelora::console
