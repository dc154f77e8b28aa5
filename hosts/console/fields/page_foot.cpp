// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/fields/page_foot.h"

#include <QAccessible>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <algorithm>

#include "hosts/console/dialogs/mnemonics.h"
#include "hosts/console/text/plain_text.h"

namespace pelora::console {
namespace {

constexpr int kLines = 2;

QStyle::StandardPixmap PictureOf(FootNote::Level level) {
  switch (level) {
    case FootNote::Level::kWrong:
      return QStyle::SP_MessageBoxCritical;
    case FootNote::Level::kOdd:
      return QStyle::SP_MessageBoxWarning;
    default:
      return QStyle::SP_MessageBoxInformation;
  }
}

QString WordOf(FootNote::Level level) {
  switch (level) {
    case FootNote::Level::kWrong:
      return QStringLiteral("Error: ");
    case FootNote::Level::kOdd:
      return QStringLiteral("Warning: ");
    default:
      return {};
  }
}

/// The text on two lines of this width, with dots where it is longer.
QString OnTwoLines(const QString& text, const QFontMetrics& metrics, int width) {
  const QRect room(0, 0, width, QWIDGETSIZE_MAX);
  if (metrics.boundingRect(room, Qt::TextWordWrap, text).height() <= kLines * metrics.height()) {
    return text;
  }
  return metrics.elidedText(text, Qt::ElideRight, kLines * width - metrics.averageCharWidth() * 8);
}

}  // namespace

PageFoot::PageFoot(QWidget* parent)
    : QFrame(parent),
      icon_(new QLabel(this)),
      text_(new QLabel(this)),
      action_(new QPushButton(this)) {
  setObjectName(QStringLiteral("page_foot"));
  text_->setObjectName(QStringLiteral("page_foot_text"));
  action_->setObjectName(QStringLiteral("page_foot_action"));
  ShowPlainly(*text_);
  text_->setWordWrap(true);
  // However long a word in it is, it widens no sheet.
  text_->setMinimumWidth(1);
  text_->setAlignment(Qt::AlignLeading | Qt::AlignVCenter);
  text_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  text_->setFocusPolicy(Qt::NoFocus);
  action_->setAutoDefault(false);
  connect(action_, &QPushButton::clicked, this, [this] {
    // It may say something else by the time that this is through.
    if (const auto act = note_.act) act();
  });
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(4, 0, 4, 0);
  layout->addWidget(icon_, 0, Qt::AlignVCenter);
  layout->addWidget(text_, 1);
  layout->addWidget(action_, 0, Qt::AlignVCenter);
  SetHeight();
  Show({});
}

void PageFoot::SetHeight() {
  setFixedHeight(std::max(kLines * fontMetrics().height() + 4, action_->sizeHint().height()));
}

void PageFoot::Show(const FootNote& note) {
  const bool is_news = note.text != note_.text && !note.text.isEmpty();
  note_ = note;
  const bool is_something = note.level != FootNote::Level::kNothing;
  icon_->setVisible(is_something);
  if (is_something) {
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    icon_->setPixmap(style()->standardIcon(PictureOf(note.level)).pixmap(size));
  }
  action_->setVisible(!note.action.isEmpty());
  action_->setText(WithMnemonics({note.action}, MnemonicsIn(*window(), action_)).front());
  layout()->activate();
  ShowText();
  text_->setAccessibleName(WordOf(note.level) + Readable(note.text));
  if (is_news && isVisible()) {
    QAccessibleEvent event(text_, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
  }
}

void PageFoot::ShowText() {
  const QString text = Readable(note_.text);
  const QString shown = OnTwoLines(text, text_->fontMetrics(), text_->width());
  text_->setText(shown);
  SetPlainToolTip(*text_, shown == text ? QString() : text);
}

void PageFoot::resizeEvent(QResizeEvent* event) {
  QFrame::resizeEvent(event);
  ShowText();
}

void PageFoot::changeEvent(QEvent* event) {
  QFrame::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) SetHeight();
}

}  // namespace pelora::console
