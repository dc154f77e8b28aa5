// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/dialogs/discard_question.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <QTreeView>

#include "hosts/console/dialogs/qt_dialog.h"
#include "hosts/console/text/plain_text.h"

namespace pelora::console {
namespace {

/// The rows of a list, as far as they are to be seen.
QString RowsOf(const QAbstractItemView& view) {
  const QAbstractItemModel* const model = view.model();
  QString text;
  for (int row = 0; model != nullptr && row < model->rowCount(); ++row) {
    for (int column = 0; column < model->columnCount(); ++column) {
      text += model->index(row, column).data().toString() + QLatin1Char('\t');
    }
  }
  return text;
}

}  // namespace

bool MayDiscard(QWidget& window, const QString& question) {
  QMessageBox box(QMessageBox::Question, window.windowTitle(), {}, QMessageBox::NoButton, &window);
  box.setObjectName(QStringLiteral("discard_question"));
  SetPlainTexts(box, question);
  QAbstractButton* discard =
      box.addButton(QStringLiteral("&Discard"), QMessageBox::DestructiveRole);
  QPushButton* keep = box.addButton(QStringLiteral("&Keep Editing"), QMessageBox::RejectRole);
  box.setDefaultButton(keep);
  box.setEscapeButton(keep);
  RunModal(box);
  return box.clickedButton() == discard;
}

QString InputsOf(const QWidget& window) {
  QString state;
  for (const QWidget* const input : window.findChildren<QWidget*>()) {
    if (const auto* edit = qobject_cast<const QLineEdit*>(input)) {
      const bool is_secret = edit->echoMode() != QLineEdit::Normal;
      state += is_secret ? QString::number(edit->text().isEmpty() ? 0 : 1) : edit->text();
    } else if (const auto* button = qobject_cast<const QAbstractButton*>(input)) {
      state += QString::number(button->isChecked() ? 1 : 0);
    } else if (const auto* box = qobject_cast<const QComboBox*>(input)) {
      state += QString::number(box->currentIndex());
    } else if (qobject_cast<const QListView*>(input) != nullptr ||
               qobject_cast<const QTreeView*>(input) != nullptr) {
      state += RowsOf(*static_cast<const QAbstractItemView*>(input));
    } else {
      continue;
    }
    state += QLatin1Char('\n');
  }
  return state;
}

}  // namespace pelora::console
