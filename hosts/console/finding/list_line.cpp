// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/finding/list_line.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>

namespace pelora::console {
namespace {

/// Pasted lists may be long.
constexpr int kLongestText = 1 << 20;

}  // namespace

ListLine::ListLine(QWidget* parent) : QLineEdit(parent) {
  setClearButtonEnabled(true);
  setMaxLength(kLongestText);
}

void ListLine::keyPressEvent(QKeyEvent* event) {
  if (!event->matches(QKeySequence::Paste)) return QLineEdit::keyPressEvent(event);
  QString pasted = QGuiApplication::clipboard()->text().trimmed();
  pasted.replace(QLatin1String("\r\n"), QLatin1String(";"));
  pasted.replace(QLatin1Char('\n'), QLatin1Char(';'));
  insert(pasted);
  Q_EMIT textEdited(text());
}

}  // namespace pelora::console
