// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>
#include <string>

namespace pelora::test {

/// Keeps a picture of a window that stands on the screen, as `NAME.png` among the build's
/// screenshots: for people to look at, and for the handbook. It is as it is drawn, in a file as
/// small as that can be. One that cannot be kept is a failure.
void KeepPicture(QWidget& window, const std::string& name);

}  // namespace pelora::test
