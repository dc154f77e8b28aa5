// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>

#include "hosts/session/new_object_kind.h"

class QMenu;
class QWidget;

namespace pelora::console {

/// The menu of the kinds of objects that can be made. It belongs to `parent`; `make` is called with
/// the kind that is chosen.
[[nodiscard]] QMenu* MakeNewObjectMenu(
    QWidget& parent, const std::function<void(const session::NewObjectKind& kind)>& make);

}  // namespace pelora::console
