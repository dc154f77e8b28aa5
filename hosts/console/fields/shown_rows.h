// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

class QListWidget;

namespace pelora::console {

// What the rows of a page's lists say to people beyond the texts that the page gave them. The texts
// stay what they are for the page.

/// The rows hold distinguished names and show what their objects are called; with the mouse on a
/// row, and to screen readers, the whole name is told. Objects of one name are told apart by where
/// they lie.
void ShowOwnNames(QListWidget& list);

/// The rows hold addresses, the default one in capitals: its row becomes bold, and screen readers
/// are told. `stored` is the default address as it was read. Gives the row; -1 where there is none,
/// or others are in capitals, too, and nobody can tell.
///
/// The row's text leaves its end free for `DefaultWord`, which whoever marks the page says there.
int MarkDefault(QListWidget& list, const QString& stored);

/// What is said at the end of the default address's row.
[[nodiscard]] QString DefaultWord();

}  // namespace pelora::console
