// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

class QWidget;

namespace pelora::console {

/// Asks before something is lost that was entered; true: it may be. Escape keeps it.
[[nodiscard]] bool MayDiscard(QWidget& window, const QString& question);

/// What the input fields of a window stand at, to be compared with what they stand at later. Of a
/// password no more than that there is one.
[[nodiscard]] QString InputsOf(const QWidget& window);

}  // namespace pelora::console
