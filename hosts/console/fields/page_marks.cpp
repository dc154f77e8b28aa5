// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/fields/page_marks.h"

#include <QAbstractItemView>
#include <QEvent>
#include <QPainter>
#include <utility>

namespace pelora::console {
namespace {

constexpr int kGap = 1;
constexpr int kBar = 3;
constexpr int kThickBar = 4;
constexpr int kHintMargin = 5;

bool IsDark(const QPalette& palette) {
  return palette.color(QPalette::Window).lightness() <
         palette.color(QPalette::WindowText).lightness();
}

/// Whether a hint stands in a selected row of a list.
bool IsSelected(const Hint& hint) {
  const auto* const list = qobject_cast<const QAbstractItemView*>(hint.control.data());
  return list != nullptr && hint.row >= 0 &&
         list->selectionModel()->isSelected(list->model()->index(hint.row, 0));
}

QColor ColourOf(MarkKind kind, const QPalette& palette) {
  const bool is_dark = IsDark(palette);
  switch (kind) {
    case MarkKind::kWrong:
      return is_dark ? QColor(0xFF, 0x7B, 0x72) : QColor(0xC0, 0x1C, 0x28);
    case MarkKind::kOdd:
      return is_dark ? QColor(0xF0, 0xB4, 0x3C) : QColor(0x9A, 0x5B, 0x00);
    case MarkKind::kChanged:
      break;
  }
  return is_dark ? QColor(0x6C, 0xB6, 0xFF) : QColor(0x1A, 0x5F, 0xB4);
}

}  // namespace

PageMarks::PageMarks(QWidget& page) : QWidget(page.parentWidget()), page_(page) {
  setObjectName(QStringLiteral("page_marks"));
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setFocusPolicy(Qt::NoFocus);
  setGeometry(page.geometry());
  page.installEventFilter(this);
  show();
  raise();
}

void PageMarks::SetMarks(std::vector<Mark> marks, std::vector<Hint> hints) {
  marks_ = std::move(marks);
  hints_ = std::move(hints);
  raise();
  update();
}

bool PageMarks::eventFilter(QObject* object, QEvent* event) {
  const bool has_moved = event->type() == QEvent::Resize || event->type() == QEvent::Move;
  if (object == &page_ && has_moved) setGeometry(page_.geometry());
  return QWidget::eventFilter(object, event);
}

QRect PageMarks::PlaceOf(const Hint& hint) const {
  const auto* const list = qobject_cast<QAbstractItemView*>(hint.control.data());
  if (list == nullptr || hint.row < 0) {
    return {hint.control->mapTo(&page_, QPoint(0, 0)), hint.control->size()};
  }
  const QRect row = list->visualRect(list->model()->index(hint.row, 0));
  const QRect across(0, row.top(), list->viewport()->width(), row.height());
  const QRect shown = across.intersected(list->viewport()->rect());
  return shown.translated(list->viewport()->mapTo(&page_, QPoint(0, 0)));
}

void PageMarks::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  for (const Mark& mark : marks_) {
    if (mark.control.isNull() || mark.control->isHidden()) continue;
    const QRect place(mark.control->mapTo(&page_, QPoint(0, 0)), mark.control->size());
    const QColor colour = ColourOf(mark.kind, palette());
    const int width = mark.kind == MarkKind::kWrong ? kThickBar : kBar;
    const int left = isRightToLeft() ? place.right() + 1 + kGap : place.left() - kGap - width;
    painter.fillRect(left, place.top(), width, place.height(), colour);
    if (mark.kind == MarkKind::kChanged) continue;
    painter.setPen(QPen(colour, 1, mark.kind == MarkKind::kOdd ? Qt::DashLine : Qt::SolidLine));
    painter.drawRect(place.adjusted(0, 0, -1, -1));
  }
  for (const Hint& hint : hints_) {
    if (hint.control.isNull() || hint.control->isHidden()) continue;
    const QRect place = PlaceOf(hint);
    if (place.isEmpty()) continue;
    painter.setFont(hint.control->font());
    painter.setPen(hint.control->palette().color(IsSelected(hint) ? QPalette::HighlightedText
                                                                  : QPalette::PlaceholderText));
    // A field's own text begins at the left in either direction.
    const Qt::Alignment end =
        hint.row < 0 ? Qt::AlignRight | Qt::AlignAbsolute : Qt::Alignment(Qt::AlignTrailing);
    painter.drawText(place.adjusted(kHintMargin, 0, -kHintMargin, 0),
                     static_cast<int>(Qt::AlignVCenter | end), hint.text);
  }
}

}  // namespace pelora::console
