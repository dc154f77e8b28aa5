// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/dialogs/static_controls.h"

#include <QAbstractButton>
#include <QEvent>
#include <QPainter>
#include <QStyle>
#include <algorithm>
#include <optional>

#include "hosts/console/dialogs/control_styles.h"
#include "hosts/console/dialogs/module_icon.h"
#include "hosts/console/dialogs/name_label.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/resources/shown_text.h"

namespace pelora::console {
namespace {

/// A text control of at least two lines breaks its text.
constexpr int kTwoLines = 16;

constexpr int kTitleIndent = 8;
constexpr int kTitleGap = 3;
constexpr double kFrameRadius = 3;
constexpr float kFrameOpacity = 0.3F;

/// What holds names has room for some lines, or says that it ends in dots.
bool HoldsNames(const resources::DialogItem& item) {
  return item.height >= kTwoLines || (item.style & style::kStaticEndEllipsis) != 0;
}

QLabel& MakeLabel(const resources::DialogItem& item, QWidget& parent) {
  return HoldsNames(item) ? *new NameLabel(&parent) : *new QLabel(&parent);
}

Qt::Alignment AlignmentOf(const resources::DialogItem& item) {
  switch (item.style & style::kStaticTypeMask) {
    case style::kStaticCenter:
      return Qt::AlignHCenter;
    case style::kStaticRight:
      return Qt::AlignRight;
    default:
      return Qt::AlignLeft;
  }
}

/// Reads its picture anew for each size that it is given.
class IconLabel final : public QLabel {
 public:
  IconLabel(std::optional<std::uint16_t> number, QWidget* parent)
      : QLabel(parent), number_(number) {
    setAlignment(Qt::AlignCenter);
  }

 protected:
  void resizeEvent(QResizeEvent* /*event*/) override {
    const auto module = resources::ResourceFile::Read(resources::EmbeddedResourceBytes());
    const int extent = std::min(width(), height());
    if (module.value && number_) setPixmap(ReadModuleIcon(*module.value, *number_, extent));
  }

 private:
  std::optional<std::uint16_t> number_;
};

}  // namespace

bool GroupFrame::event(QEvent* event) {
  if (event->type() == QEvent::Shortcut && next_ != nullptr) {
    next_->setFocus(Qt::ShortcutFocusReason);
    return true;
  }
  return QGroupBox::event(event);
}

void GroupFrame::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const QFontMetrics metrics = fontMetrics();
  const QSize room(metrics.size(Qt::TextShowMnemonic, title()).width(), metrics.height());
  const QRect text =
      QStyle::visualRect(layoutDirection(), rect(), QRect(QPoint(kTitleIndent, 0), room));
  QColor line = palette().color(QPalette::WindowText);
  line.setAlphaF(kFrameOpacity);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(line);
  if (!title().isEmpty()) {
    const QRect gap = text.adjusted(-kTitleGap, 0, kTitleGap, 0);
    painter.setClipRegion(QRegion(rect()) - QRegion(gap));
  }
  const int middle = metrics.height() / 2;
  const QRectF frame = QRectF(rect()).adjusted(0.5, middle + 0.5, -0.5, -0.5);
  painter.drawRoundedRect(frame, kFrameRadius, kFrameRadius);
  painter.restore();
  const bool underline = style()->styleHint(QStyle::SH_UnderlineShortcut, nullptr, this) != 0;
  const int flags = underline ? Qt::TextShowMnemonic : Qt::TextShowMnemonic | Qt::TextHideMnemonic;
  style()->drawItemText(&painter, text, flags, palette(), isEnabled(), title(),
                        QPalette::WindowText);
}

GroupControl::GroupControl(const resources::DialogItem& item, QWidget& parent,
                           ControlEvents& events)
    : DialogControl(item, *new GroupFrame(ToQString(item.title), &parent), events),
      frame_(static_cast<GroupFrame&>(widget())),
      text_(item.title) {
  frame_.setAccessibleName(WithoutMnemonic(frame_.title()));
}

QString GroupControl::Caption() const {
  const QWidget* const next = frame_.next();
  const bool names_next = next != nullptr && next->focusPolicy() != Qt::NoFocus &&
                          qobject_cast<const QAbstractButton*>(next) == nullptr;
  return names_next ? ToQString(text_) : QString();
}

void GroupControl::SetText(std::string_view text) {
  text_ = text;
  frame_.setTitle(ToQString(text));
}

LabelControl::LabelControl(const resources::DialogItem& item, QWidget& parent,
                           ControlEvents& events)
    : DialogControl(item, MakeLabel(item, parent), events),
      label_(static_cast<QLabel&>(widget())),
      text_(resources::ShownText(item.title)),
      has_mnemonics_((item.style & style::kStaticNoPrefix) == 0),
      fits_any_width_(HoldsNames(item)) {
  ShowPlainly(label_);
  const bool has_lines = item.height >= kTwoLines;
  label_.setWordWrap(has_lines);
  label_.setAlignment(AlignmentOf(item) | (has_lines ? Qt::AlignTop : Qt::AlignVCenter));
  Show();
}

void LabelControl::SetText(std::string_view text) {
  text_ = text;
  Show();
}

void LabelControl::SetBuddy(QWidget& buddy) {
  if (!has_mnemonics_) return;
  label_.setBuddy(&buddy);
  Show();
}

void LabelControl::Show() {
  // A label without a buddy draws "&" as it is; one with a buddy underlines what follows.
  const QString lines = ToQString(text_).replace(QLatin1String("\r\n"), QLatin1String("\n"));
  const QString text = Readable(lines);
  const bool plain = has_mnemonics_ && label_.buddy() == nullptr;
  label_.setText(plain ? WithoutMnemonic(text) : text);
}

QString LabelControl::Caption() const {
  return has_mnemonics_ && label_.buddy() != nullptr ? ToQString(text_) : QString();
}

QSize LabelControl::NeededSize() const { return fits_any_width_ ? QSize() : label_.sizeHint(); }

IconControl::IconControl(const resources::DialogItem& item, QWidget& parent, ControlEvents& events)
    : DialogControl(item, *new IconLabel(item.title_resource, &parent), events) {}

RuleControl::RuleControl(const resources::DialogItem& item, QWidget& parent, ControlEvents& events)
    : DialogControl(item, *new QFrame(&parent), events) {
  const bool rule = (item.style & style::kStaticTypeMask) == style::kStaticHorizontalLine;
  if (!rule) return;
  auto& frame = static_cast<QFrame&>(widget());
  frame.setFrameShape(QFrame::HLine);
  frame.setFrameShadow(QFrame::Sunken);
}

}  // namespace pelora::console
