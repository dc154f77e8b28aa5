// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/dialogs/name_label.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>
#include <algorithm>

#include "hosts/console/text/plain_text.h"

namespace pelora::console {
namespace {

constexpr int kLeastLetters = 6;

/// How a text is broken into lines: between words, and within them only when one alone is longer
/// than a line.
int Breaking(const QFontMetrics& metrics, int width, const QString& text) {
  const QRect lines(0, 0, width, QWIDGETSIZE_MAX);
  const bool have_words_room = metrics.boundingRect(lines, Qt::TextWordWrap, text).width() <= width;
  return have_words_room ? Qt::TextWordWrap : Qt::TextWordWrap | Qt::TextWrapAnywhere;
}

QSize BrokenSize(const QFontMetrics& metrics, int width, const QString& text) {
  const QRect lines(0, 0, width, QWIDGETSIZE_MAX);
  return metrics.boundingRect(lines, Breaking(metrics, width, text), text).size();
}

}  // namespace

NameLabel::NameLabel(QWidget* parent) : QLabel(parent) { ShowPlainly(*this); }

void NameLabel::setText(const QString& text) { QLabel::setText(Readable(text)); }

QSize NameLabel::RoomOfText(int width) const {
  if (!wordWrap()) return fontMetrics().size(Qt::TextSingleLine, text());
  return BrokenSize(fontMetrics(), width, text());
}

QSize NameLabel::minimumSizeHint() const {
  const QSize least(kLeastLetters * fontMetrics().averageCharWidth(), fontMetrics().height());
  return least.boundedTo(QLabel::minimumSizeHint());
}

int NameLabel::heightForWidth(int width) const {
  return wordWrap() ? RoomOfText(width).height() : QLabel::heightForWidth(width);
}

bool NameLabel::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QLabel::event(event);
  const QSize room = RoomOfText(width());
  const bool is_whole = room.width() <= width() && room.height() <= height();
  if (!is_whole && toolTip().isEmpty()) {
    ShowWholeText(*this, static_cast<const QHelpEvent&>(*event), text());
    return true;
  }
  return QLabel::event(event);
}

QString NameLabel::ShownText() const {
  if (!wordWrap()) return fontMetrics().elidedText(text(), Qt::ElideRight, width());
  // A line may reach over the edge by what hardly anybody sees.
  const int room = std::max(fontMetrics().height(), height() + fontMetrics().height() / 3);
  const auto fits = [this, room](const QString& shown) {
    return BrokenSize(fontMetrics(), width(), shown).height() <= room;
  };
  if (fits(text())) return text();
  const auto cut = [this](qsizetype letters) { return text().left(letters) + QChar(0x2026); };
  qsizetype fitting = 0;
  qsizetype too_many = text().size();
  while (too_many - fitting > 1) {
    const qsizetype middle = fitting + (too_many - fitting) / 2;
    (fits(cut(middle)) ? fitting : too_many) = middle;
  }
  return cut(fitting);
}

void NameLabel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const int aligned = static_cast<int>(QStyle::visualAlignment(layoutDirection(), alignment()));
  const QString shown = ShownText();
  const int breaking = wordWrap() ? Breaking(fontMetrics(), width(), shown) : 0;
  style()->drawItemText(&painter, rect(), aligned | breaking, palette(), isEnabled(), shown,
                        foregroundRole());
}

void ShowWholeText(QWidget& widget, const QHelpEvent& event, const QString& text) {
  QToolTip::showText(event.globalPos(), PlainToolTip(text), &widget);
}

}  // namespace pelora::console
