// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

class QLabel;
class QMessageBox;
class QWidget;

namespace pelora::console {

// Whoever may write into the directory decides what its texts hold, and the toolkit takes many a
// text for markup that loads files. Whatever shows such a text shows it through one of these.

/// A text for people to read, as it is but for what would harm its surroundings: control characters
/// and marks that turn the direction of what follows are shown as U+FFFD, and one that is very long
/// is cut short. Line breaks and tabs stay.
[[nodiscard]] QString Readable(const QString& text);

/// A window's title that is shown as it is: the toolkit takes "[*]" in it for a mark.
void SetPlainTitle(QWidget& window, const QString& title);

/// A tooltip that shows the text and nothing else; none for an empty text.
[[nodiscard]] QString PlainToolTip(const QString& text);

/// Gives a widget such a tooltip; a screen reader hears the text as it is.
void SetPlainToolTip(QWidget& widget, const QString& text);

/// From now on the label takes no text for markup.
void ShowPlainly(QLabel& label);

/// Sets what a box says, and what it adds in smaller letters. All of it can be selected and copied:
/// what goes wrong is passed on to whoever can help. A word that is longer than a line, as a name
/// may be, is broken.
void SetPlainTexts(QMessageBox& box, const QString& text, const QString& addition = {});

}  // namespace pelora::console
