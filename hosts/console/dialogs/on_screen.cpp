// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/dialogs/on_screen.h"

#include <QEvent>
#include <QLayout>
#include <QScreen>
#include <QWidget>
#include <algorithm>

namespace pelora::console {
namespace {

/// What the frame of a window may take. It is not known before the window is shown.
constexpr QSize kFrame(16, 40);
/// Of a list at least so much is to be seen.
constexpr int kLeastLines = 3;

/// The begin, moved as little as possible, of a length that is to lie within limits.
int Within(int begin, int length, int first, int end) {
  return std::max(first, std::min(begin, end - length));
}

/// The height that all of a window with a layout takes.
int HeightFor(const QWidget& window, int width) {
  const QLayout& layout = *window.layout();
  // Without lines to be broken a layout has no height for a width.
  return layout.hasHeightForWidth() ? layout.totalHeightForWidth(width)
                                    : window.sizeHint().height();
}

/// Waits for a window to be shown.
class Shown final : public QObject {
 public:
  explicit Shown(QWidget& window) : QObject(&window) { window.installEventFilter(this); }

  bool eventFilter(QObject* object, QEvent* event) override {
    if (event->type() != QEvent::Show) return false;
    auto* const window = static_cast<QWidget*>(object);
    // It finds its size while it is told.
    QMetaObject::invokeMethod(
        this, [window] { KeepOnScreen(*window); }, Qt::QueuedConnection);
    return false;
  }
};

}  // namespace

QSize RoomOnScreen(const QWidget& window) { return window.screen()->availableSize() - kFrame; }

void KeepOnScreenWhenShown(QWidget& window) { new Shown(window); }

void ResizeToFit(QWidget& window, QSize wanted) {
  window.resize(wanted.expandedTo(window.minimumSizeHint()).boundedTo(RoomOnScreen(window)));
}

void ResizeToFit(QWidget& window, int width, const QList<ListHeight>& lists) {
  const auto set_height = [](const ListHeight& height, int lines) {
    height.list->setMinimumHeight(lines * height.list->fontMetrics().lineSpacing());
  };
  for (const ListHeight& height : lists) set_height(height, height.lines);
  const QSize wanted(width, window.sizeHint().height());
  for (const ListHeight& height : lists) set_height(height, std::min(height.lines, kLeastLines));
  ResizeToFit(window, wanted);
}

void ResizeToTexts(QWidget& window, int characters) {
  const int width = std::max(
      window.minimumSizeHint().width(),
      std::min(characters * window.fontMetrics().averageCharWidth(), RoomOnScreen(window).width()));
  ResizeToFit(window, QSize(width, HeightFor(window, width)));
}

void GrowToTexts(QWidget& window) {
  QLayout* const layout = window.layout();
  if (layout == nullptr || !layout->hasHeightForWidth()) return;
  layout->activate();
  const int needed =
      std::min(layout->totalMinimumHeightForWidth(window.width()), RoomOnScreen(window).height());
  if (needed > window.height()) window.resize(window.width(), needed);
}

void KeepOnScreen(QWidget& window) {
  const QSize room = RoomOnScreen(window);
  // A box that found its own size keeps it.
  const QSize least = window.minimumSize();
  if (least != least.boundedTo(room) && window.layout() != nullptr) {
    const int width = std::min(window.width(), room.width());
    window.setFixedSize(QSize(width, HeightFor(window, width)).boundedTo(room));
  }
  window.resize(window.size().boundedTo(room));
  const QRect screen = window.screen()->availableGeometry();
  const QSize size = window.size() + kFrame;
  const QPoint place(
      Within(window.x(), size.width(), screen.left(), screen.left() + screen.width()),
      Within(window.y(), size.height(), screen.top(), screen.top() + screen.height()));
  if (place != window.pos()) window.move(place);
}

}  // namespace pelora::console
