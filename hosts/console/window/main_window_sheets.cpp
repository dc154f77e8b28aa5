// SPDX-License-Identifier: Apache-2.0
// The way from a selection to its properties.
#include <QMessageBox>
#include <QStatusBar>
#include <utility>

#include "hosts/console/dialogs/qt_dialog.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/main_window.h"
#include "hosts/session/find/object_search.h"

namespace pelora::console {
namespace {

constexpr std::string_view kUsers = "(&(objectClass=user)(!(objectClass=computer)))";

}  // namespace

void MainWindow::ShowSelection() {
  const std::vector<session::DirectoryObject> selection = Selection();
  const std::vector<session::DirectoryObject> listed = pane_->list().Selection();
  const bool is_listed =
      selection.size() == 1 && listed.size() == 1 && selection.front().dn == listed.front().dn;
  ShowProperties(selection, is_listed ? pane_->list().SelectedAttribute() : std::string());
}

void MainWindow::ShowProperties(std::span<const session::DirectoryObject> selection,
                                const std::string& attribute) {
  (void)OpenSheet(selection, attribute);
}

void MainWindow::ShowUsersBelow() {
  const std::optional<session::DirectoryObject> container = pane_->PlaceForNew();
  if (!directory_ || !container) return;
  const QString name = Readable(ToQString(container->name));
  std::vector<session::DirectoryObject> users;
  session::ListingEnd ending;
  bool is_stopped = false;
  errands_.Run("Looking for the users below...", [&](session::IErrand& errand) {
    directory_->store.StopOn(errand.stop());
    ending = session::FindObjects(directory_->store,
                                  {.filter = std::string(kUsers), .base = container->dn},
                                  [&users](session::FoundObject found) {
                                    users.push_back(std::move(found.object));
                                    return true;
                                  });
    directory_->store.StopOn({});
    is_stopped = errand.stop().stop_requested();
  });
  if (is_stopped) return;
  // Some of them would pass for all.
  if (ending.end.reason != session::SearchEnd::Reason::kComplete) {
    return ReportLater(QStringLiteral("Not all users below %1 can be read.").arg(name),
                       ToQString(ending.end.text));
  }
  if (users.empty()) {
    return statusBar()->showMessage(QStringLiteral("There are no users below %1.").arg(name));
  }
  ShowProperties(users);
}

SheetResult MainWindow::MakeSheet(std::span<const session::DirectoryObject> selection,
                                  QWidget& parent, ShowObject show_object) {
  SheetResult made = MakePropertySheet(selection, directory_->session->specifiers,
                                       {.store = directory_->store,
                                        .platform = directory_->platform.platform(),
                                        .templates = templates_,
                                        .errands = &errands_,
                                        .desk = &desk_,
                                        .history = &directory_->history,
                                        .open_another = directory_->session->open_another,
                                        .find_places = directory_->session->find_places},
                                       &parent, std::move(show_object));
  if (!made.sheet && !made.is_stopped) {
    ReportLater(QStringLiteral("There are no properties to show."), made.error);
  }
  if (!made.missing.isEmpty()) {
    ReportLater(QStringLiteral("Not all properties can be shown."), made.missing);
  }
  return made;
}

QtPropertySheet* MainWindow::OpenSheet(std::span<const session::DirectoryObject> selection,
                                       const std::string& attribute) {
  if (!directory_) return nullptr;
  if (QtPropertySheet* const open = sheets_.Raise(selection)) {
    if (!attribute.empty()) open->go_to(attribute);
    return open;
  }
  SheetResult made = MakeSheet(
      selection, *this,
      [this](const session::DirectoryObject& object, QWidget& from) { ShowAnother(object, from); });
  QtPropertySheet* const sheet = made.sheet.get();
  if (sheet == nullptr) return nullptr;
  const std::vector<session::DirectoryObject> objects(selection.begin(), selection.end());
  sheet->machine().on_applied = [this, sheet, objects, is_outdated = made.is_outdated] {
    OnApplied();
    if (!is_outdated()) return;
    // Later: the sheet stands on the stack.
    QMetaObject::invokeMethod(
        sheet, [this, sheet, objects] { OpenAnew(*sheet, objects); }, Qt::QueuedConnection);
  };
  sheets_.Show(std::move(made.sheet), selection);
  if (!attribute.empty()) sheet->go_to(attribute);
  return sheet;
}

void MainWindow::OnApplied() {
  pane_->RefreshList();
  const std::string& failure = directory_->history.failure();
  if (!failure.empty()) SayItIsForGood(ToQString(failure));
}

void MainWindow::SayItIsForGood(const QString& reason) {
  statusBar()->showMessage(
      QStringLiteral("This change cannot be taken back: %1").arg(Readable(reason)));
}

void MainWindow::OpenAnew(QtPropertySheet& sheet,
                          const std::vector<session::DirectoryObject>& objects) {
  if (!sheet.isVisible() || sheet.HasUnsavedEdits()) return;
  const std::size_t page = sheet.CurrentPage();
  const QWidget* const focus = sheet.focusWidget();
  const QString name = focus != nullptr ? focus->objectName() : QString();
  sheet.reject();
  QtPropertySheet* const anew = OpenSheet(objects);
  if (anew == nullptr) return;
  anew->SelectPage(page);
  // The keyboard goes on where it was.
  if (QtDialog* const dialog = anew->Dialog(anew->CurrentPage())) {
    auto* const control = dialog->widget().findChild<QWidget*>(name);
    if (!name.isEmpty() && control != nullptr) control->setFocus();
  }
}

void MainWindow::ShowAnother(const session::DirectoryObject& object, QWidget& from) {
  const std::span selection(&object, 1);
  if (!from.isModal()) return ShowProperties(selection);
  if (sheets_.Find(selection) != nullptr) {
    QMessageBox box(QMessageBox::Information, QStringLiteral("Pelora Console"), {}, QMessageBox::Ok,
                    &from);
    box.setObjectName(QStringLiteral("open_already"));
    SetPlainTexts(
        box, QStringLiteral("The settings of %1 are open already.").arg(ToQString(object.name)),
        QStringLiteral("Their window can be used again as soon as this one is closed."));
    RunModal(box);
    return;
  }
  // Nothing beside a modal window can be used: over it, the sheet is waited for.
  const SheetResult made = MakeSheet(selection, from, {});
  if (!made.sheet) return;
  made.sheet->machine().on_applied = [this] { OnApplied(); };
  sheets_.ShowModal(*made.sheet, selection);
}

}  // namespace pelora::console
