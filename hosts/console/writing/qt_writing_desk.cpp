// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/writing/qt_writing_desk.h"

#include <QMessageBox>

#include "hosts/console/dialogs/qt_dialog.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/writing/conflict_dialog.h"
#include "hosts/console/writing/result_dialog.h"
#include "hosts/console/writing/review_dialog.h"

namespace pelora::console {

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
  box.setDetailedText(Readable(ToQString(failure.details)));
  box.setStandardButtons(QMessageBox::Ok);
  RunModal(box);
}

}  // namespace pelora::console
