// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/writing/qt_writing_desk.h"

#include <QAbstractButton>
#include <QMessageBox>
#include <QTextEdit>

#include "hosts/console/dialogs/on_screen.h"
#include "hosts/console/dialogs/qt_dialog.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/writing/conflict_dialog.h"
#include "hosts/console/writing/result_dialog.h"
#include "hosts/console/writing/review_dialog.h"

namespace pelora::console {
namespace {

/// Gives a box details that are shown on demand, by a letter too.
void GiveDetails(QMessageBox& box, const QString& details) {
  box.setDetailedText(details);
  for (QAbstractButton* const button : box.buttons()) {
    if (box.buttonRole(button) != QMessageBox::ActionRole) continue;
    const auto give_letter = [button] {
      QString text = WithoutMnemonic(button->text());
      button->setText(text.replace(QLatin1String("Details"), QLatin1String("&Details")));
    };
    give_letter();
    // The box words the button and finds its size anew with every click, when others have been
    // told.
    const auto settle = [&box, give_letter] {
      give_letter();
      KeepOnScreen(box);
    };
    QObject::connect(button, &QAbstractButton::clicked, button, settle, Qt::QueuedConnection);
  }
  if (auto* const shown = box.findChild<QTextEdit*>()) {
    shown->setObjectName(QStringLiteral("box_details"));
    shown->setAccessibleName(QStringLiteral("Details"));
  }
}

}  // namespace

bool QtWritingDesk::ShowReview(IDialog* owner, session::Review& review) {
  ReviewDialog dialog(review, WindowOf(owner));
  return RunModal(dialog) == QDialog::Accepted;
}

bool QtWritingDesk::ShowConflicts(IDialog* owner, std::vector<session::ShownConflict>& conflicts) {
  ConflictDialog dialog(conflicts, WindowOf(owner));
  return RunModal(dialog) == QDialog::Accepted;
}

bool QtWritingDesk::ShowResults(IDialog* owner, std::span<const session::WrittenChange> results) {
  ResultDialog dialog(results, WindowOf(owner));
  return RunModal(dialog) == QDialog::Accepted;
}

void QtWritingDesk::ShowFailure(IDialog* owner, const session::ShownFailure& failure) {
  QMessageBox box(WindowOf(owner));
  box.setObjectName(QStringLiteral("write_failure"));
  box.setWindowTitle(QStringLiteral("Pelora Error"));
  box.setIcon(QMessageBox::Critical);
  SetPlainTexts(box, ToQString(failure.summary), ToQString(failure.advice));
  box.setStandardButtons(QMessageBox::Ok);
  GiveDetails(box, Readable(ToQString(failure.details)));
  RunModal(box);
}

}  // namespace pelora::console
