// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/dialogs/multi_line_edit_control.h"

#include <QSignalBlocker>

#include "hosts/console/text/qt_text.h"

namespace pelora::console {

MultiLineEditControl::MultiLineEditControl(const resources::DialogItem& item, QWidget& parent,
                                           ControlEvents& events)
    : DialogControl(item, *new QPlainTextEdit(ToQString(item.title), &parent), events),
      edit_(static_cast<QPlainTextEdit&>(widget())) {
  edit_.setTabChangesFocus(true);
  QObject::connect(&edit_, &QPlainTextEdit::textChanged, &edit_,
                   [this] { Notify(ControlNotification::kEditChange); });
}

std::string MultiLineEditControl::Text() const {
  QString text = edit_.toPlainText();
  text.replace(QStringLiteral("\n"), QStringLiteral("\r\n"));
  return ToUtf8(text);
}

void MultiLineEditControl::SetText(std::string_view text) {
  {
    // Reported below in any case: the signal does not come when the text is the same.
    const QSignalBlocker blocker(edit_);
    edit_.setPlainText(ToQString(text).remove(QLatin1Char('\r')));
  }
  Notify(ControlNotification::kEditChange);
}

}  // namespace pelora::console
