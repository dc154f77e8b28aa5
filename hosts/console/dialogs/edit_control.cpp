// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/dialogs/edit_control.h"

#include <QHelpEvent>
#include <QSignalBlocker>
#include <algorithm>
#include <limits>

#include "hosts/console/dialogs/control_styles.h"
#include "hosts/console/dialogs/name_label.h"
#include "hosts/console/text/qt_text.h"

namespace pelora::console {
namespace {

qsizetype CountOtherThanDigits(const QString& text) {
  return std::count_if(text.begin(), text.end(), [](QChar character) {
    return character < QLatin1Char('0') || character > QLatin1Char('9');
  });
}

/// An edit field that shows the whole of a text that is longer than it is, where the mouse rests.
class TextField final : public QLineEdit {
 public:
  using QLineEdit::QLineEdit;

 protected:
  bool event(QEvent* event) override {
    const bool asks = event->type() == QEvent::ToolTip && toolTip().isEmpty();
    if (!asks || fontMetrics().horizontalAdvance(text()) <= contentsRect().width()) {
      return QLineEdit::event(event);
    }
    ShowWholeText(*this, static_cast<const QHelpEvent&>(*event), text());
    return true;
  }
};

}  // namespace

QValidator::State DigitsValidator::validate(QString& input, int& /*position*/) const {
  return CountOtherThanDigits(input) <= other_characters_ ? Acceptable : Invalid;
}

void DigitsValidator::Accept(const QString& text) {
  other_characters_ = CountOtherThanDigits(text);
}

EditControl::EditControl(const resources::DialogItem& item, QWidget& parent, ControlEvents& events)
    : DialogControl(item, *new TextField(ToQString(item.title), &parent), events),
      edit_(static_cast<QLineEdit&>(widget())) {
  edit_.setMaxLength(std::numeric_limits<int>::max());
  if ((item.style & style::kEditNumber) != 0) {
    digits_ = new DigitsValidator(&edit_);
    digits_->Accept(edit_.text());
    edit_.setValidator(digits_);
    edit_.setInputMethodHints(Qt::ImhDigitsOnly);
  }
  if ((item.style & style::kEditReadOnly) != 0) {
    edit_.setReadOnly(true);
    QPalette palette = edit_.palette();
    palette.setBrush(QPalette::Base, palette.brush(QPalette::Window));
    edit_.setPalette(palette);
  }
  QObject::connect(&edit_, &QLineEdit::textChanged, &edit_, [this] { Changed(); });
}

std::string EditControl::Text() const { return ToUtf8(edit_.text()); }

void EditControl::SetText(std::string_view text) {
  const QString shown = ToQString(text);
  {
    // Reported below in any case: the signal does not come when the text is the same.
    const QSignalBlocker blocker(edit_);
    if (digits_ != nullptr) digits_->Accept(shown);
    edit_.setText(shown);
    edit_.setCursorPosition(0);
  }
  Changed();
}

void EditControl::Changed() {
  if (digits_ != nullptr) digits_->Accept(edit_.text());
  Notify(ControlNotification::kEditChange);
}

int EditControl::ClientWidth() const {
  const QMargins margins = edit_.textMargins();
  return edit_.contentsRect().width() - margins.left() - margins.right();
}

QSize EditControl::NeededSize() const { return {0, edit_.minimumSizeHint().height()}; }

}  // namespace pelora::console
