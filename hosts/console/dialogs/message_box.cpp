// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/dialogs/message_box.h"

#include <QMessageBox>

#include "hosts/console/dialogs/qt_dialog.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"

namespace pelora::console {
namespace {

/// Caption of a box that names none, as the platform has it.
constexpr const char* kDefaultCaption = "Error";

QMessageBox::Icon IconOf(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::kError:
      return QMessageBox::Critical;
    case MessageIcon::kWarning:
      return QMessageBox::Warning;
    case MessageIcon::kNone:
      break;
  }
  return QMessageBox::NoIcon;
}

}  // namespace

std::int32_t QtMessageBox::Show(IDialog* owner, const Message& message) {
  QString text = ToQString(message.text);
  text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  const bool asks = message.buttons == MessageButtons::kYesNo;
  QMessageBox box(WindowOf(owner));
  box.setObjectName(QStringLiteral("message_box"));
  SetPlainTitle(box, ToQString(message.caption.value_or(kDefaultCaption)));
  box.setIcon(IconOf(message.icon));
  SetPlainTexts(box, text);
  box.setStandardButtons(asks ? QMessageBox::Yes | QMessageBox::No : QMessageBox::Ok);
  const int answer = RunModal(box);
  if (!asks) return kDialogOk;
  return answer == QMessageBox::Yes ? kDialogYes : kDialogNo;
}

}  // namespace pelora::console
