// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QSize>

class QWidget;

namespace pelora::console {

/// The largest size that a window may have on its screen, whose panels and the window's own frame
/// take some room.
[[nodiscard]] QSize RoomOnScreen(const QWidget& window);

/// Gives a window the size that is wanted for it, as far as the screen has room.
void ResizeToFit(QWidget& window, QSize wanted);

/// The same for a window of this width in which lists stand that are to show so many lines each at
/// first. They may become smaller, when the window does.
struct ListHeight {
  QWidget* list;
  int lines;
};
void ResizeToFit(QWidget& window, int width, const QList<ListHeight>& lists);

/// Gives a window that holds lines and texts so many average characters of width, and the height
/// that all of its texts take there, as far as the screen has room.
void ResizeToTexts(QWidget& window, int characters);

/// Makes a window higher when its texts need it, as far as the screen has room.
void GrowToTexts(QWidget& window);

/// Makes a window no larger than there is room on its screen, and moves it there when it lies
/// beside it, wholly or in part.
void KeepOnScreen(QWidget& window);

/// Does that as soon as the window is shown: boxes find their size only then.
void KeepOnScreenWhenShown(QWidget& window);

}  // namespace pelora::console
