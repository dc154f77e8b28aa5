// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

#include "hosts/session/find/view.h"

namespace pelora::console {

/// Lets the user name a view and, who knows how, write its LDAP filter; a filter that is none is
/// held back, with the place of its fault marked. False, and the view as it was, when he gives up.
[[nodiscard]] bool EditView(session::View& view, QWidget* parent);

}  // namespace pelora::console
