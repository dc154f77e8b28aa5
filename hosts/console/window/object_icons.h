// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QIcon>

#include "hosts/session/object_class.h"

namespace pelora::console {

/// The picture of a kind of object. It is drawn when it is needed, in the colours of the desktop's
/// palette and at any size; kinds, and the marks on them, differ in shape, not in colour alone.
[[nodiscard]] QIcon IconOf(session::ObjectIcon icon,
                           session::ObjectMark mark = session::ObjectMark::kNone);

/// What a mark says, for who does not see the picture; empty for none.
[[nodiscard]] QString TextOf(session::ObjectMark mark);

}  // namespace pelora::console
