// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QWidget>

namespace pelora::console {

/// Shows a window, lets it settle, and writes what it looks like to a PNG file. Gives an empty
/// text, or a sentence that says why there is no picture.
[[nodiscard]] QString WriteScreenshot(QWidget& window, const QString& path);

}  // namespace pelora::console
