// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>

class QWidget;

namespace pelora::console {

/// The texts of a window's controls, each marked ("&") with the letter that leads to it with Alt:
/// another one for each, and none of `taken`. A text keeps the mark that it has where it can, and
/// else gets the first letter of one of its words where it can. A text has no mark only if all its
/// letters belong to others.
[[nodiscard]] QStringList WithMnemonics(const QStringList& texts, const QString& taken);

/// The letters that lead to what is shown in a window, but for one of its widgets.
[[nodiscard]] QString MnemonicsIn(const QWidget& window, const QWidget* except);

/// The letter that is marked in a text, as a capital; null when none is.
[[nodiscard]] QChar MnemonicOf(const QString& text);

}  // namespace pelora::console
