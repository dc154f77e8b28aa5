// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/window/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QScopeGuard>
#include <QStatusBar>
#include <array>
#include <optional>
#include <utility>

#include "hosts/console/new_object/make_new_object_wizard.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/connect_dialog.h"
#include "hosts/console/window/object_icons.h"
#include "hosts/session/property_tabs.h"

namespace pelora::console {
MainWindow::MainWindow(const resources::ResourceFile& module) : module_(module) {
  setWindowTitle(QStringLiteral("Pelora Console"));
  setWindowIcon(IconOf(session::ObjectIcon::kDomain));
  MakePane();
  MakeActions();
  MakePlaces();
  MakeMenus();
  count_ = new QLabel(this);
  hint_ = new QLabel(this);
  who_ = new QLabel(this);
  who_->setObjectName(QStringLiteral("who"));
  for (QLabel* label : {count_, hint_, who_}) ShowPlainly(*label);
  Recall();
  statusBar()->addWidget(count_);
  statusBar()->addPermanentWidget(hint_);
  statusBar()->addPermanentWidget(who_);
  pane_->on_changed = [this] { UpdateActions(); };
  pane_->on_failure = [this](const QString& text, const QString& reason) {
    ReportLater(text, reason);
  };
  history_desk_.on_told = [this](const QString& text) { statusBar()->showMessage(text); };
  // What was taken back may be a container's name or place.
  history_desk_.on_written = [this] { pane_->Refresh(); };
  UpdateActions();
}

MainWindow::~MainWindow() {
  // Its threads read the directory, and the sheets write into it: the session ends after both.
  pane_->on_changed = nullptr;
  delete std::exchange(pane_, nullptr);
}

bool MainWindow::OpenFile(const QString& path) {
  session::SessionResult opened = session::OpenDirectoryFile(QFile::encodeName(path).toStdString());
  if (opened.session) return SetSession(std::move(opened.session));
  ReportLater(QStringLiteral("The directory file cannot be opened."), ToQString(opened.error));
  return false;
}

void MainWindow::OpenBesides(const QString& name, SessionOpening::Open open,
                             std::function<void()> on_shown) {
  openings_.Open(name, std::move(open), std::move(on_shown));
  UpdateActions();
}

void MainWindow::ShowOpened(DirectoryOpenings::Opened opened) {
  if (!opened.result.session) {
    ReportLater(QStringLiteral("%1 cannot be opened.").arg(opened.name),
                ToQString(opened.result.error));
  } else if (SetSession(std::move(opened.result.session)) && opened.on_shown) {
    opened.on_shown();
  }
  UpdateActions();
}

bool MainWindow::SetSession(std::unique_ptr<session::DirectorySession> session) {
  auto shown =
      std::make_unique<ShownDirectory>(std::move(session), errands_, message_box_, module_);
  const session::DirectoryBrowser browser(shown->store);
  session::DirectoryObject base;
  if (const ldap::StoreStatus status = browser.ReadBase(base); !status.Ok()) {
    ReportLater(QStringLiteral("The directory cannot be read."), ToQString(status.text));
    return false;
  }
  // Only now: a directory that cannot be read costs nobody his open sheets.
  if (!sheets_.CloseAll()) return false;
  RememberContainer();
  pane_->EndDirectory();
  history_desk_.SetDirectory(&shown->history, &shown->store);
  directory_ = std::move(shown);
  const session::DirectorySession& open = *directory_->session;
  const QString path = ToQString(open.path);
  const QString name = open.is_file ? QFileInfo(path).fileName() : path;
  setWindowTitle(QStringLiteral("%1 - Pelora Console").arg(name));
  who_->setText(open.user.empty()
                    ? QStringLiteral("Directory file %1").arg(Readable(name))
                    : QStringLiteral("%1 on %2").arg(Readable(ToQString(open.user)), name));
  pane_->ShowDirectory(std::move(base), open.open_another, &directory_->fields);
  RecallContainer();
  return true;
}

void MainWindow::StopReading() {
  openings_.Stop();
  pane_->StopReading();
  UpdateActions();
}

void MainWindow::OpenSelection() {
  const std::vector<session::DirectoryObject> selected = pane_->list().Selection();
  if (selected.size() != 1 || !selected.front().kind.is_container) {
    if (!properties_->isEnabled()) return;
    return ShowProperties(selected, pane_->list().SelectedAttribute());
  }
  if (pane_->find().IsAsking()) return pane_->GoTo(selected.front().dn);
  pane_->GoToChild(selected.front().dn);
}

void MainWindow::ShowSelection() {
  const std::vector<session::DirectoryObject> selection = Selection();
  const std::vector<session::DirectoryObject> listed = pane_->list().Selection();
  const bool is_listed =
      selection.size() == 1 && listed.size() == 1 && selection.front().dn == listed.front().dn;
  ShowProperties(selection, is_listed ? pane_->list().SelectedAttribute() : std::string());
}

void MainWindow::ShowProperties(std::span<const session::DirectoryObject> selection,
                                const std::string& attribute) {
  if (!directory_) return;
  QStringList names;
  for (const session::DirectoryObject& object : selection) names.append(ToQString(object.dn));
  const QString key = names.join(QLatin1Char('\n'));
  if (sheets_.Raise(key)) return;
  SheetResult made = MakePropertySheet(
      selection, directory_->session->specifiers,
      {.store = directory_->store,
       .platform = directory_->platform.platform(),
       .templates = module_,
       .errands = &errands_,
       .desk = &desk_,
       .history = &directory_->history,
       .open_another = directory_->session->open_another},
      this,
      [this](const session::DirectoryObject& object, QWidget& from) { ShowAnother(object, from); });
  if (made.is_stopped) return;
  if (!made.sheet) {
    return ReportLater(QStringLiteral("There are no properties to show."), made.error);
  }
  if (!made.missing.isEmpty()) {
    ReportLater(QStringLiteral("Not all properties can be shown."), made.missing);
  }
  const std::vector<session::DirectoryObject> objects(selection.begin(), selection.end());
  QtPropertySheet* const sheet = made.sheet.get();
  sheet->machine().on_applied = [this, sheet, objects, is_outdated = made.is_outdated] {
    pane_->RefreshList();
    if (const std::string& failure = directory_->history.failure(); !failure.empty()) {
      statusBar()->showMessage(
          QStringLiteral("This change cannot be taken back: %1").arg(Readable(ToQString(failure))));
    }
    if (!is_outdated()) return;
    // Later: the sheet stands on the stack.
    QMetaObject::invokeMethod(
        sheet, [this, sheet, objects] { OpenAnew(*sheet, objects); }, Qt::QueuedConnection);
  };
  sheets_.Show(std::move(made.sheet), key);
  if (!attribute.empty()) made.fields->GoTo(attribute);
}

void MainWindow::OpenAnew(QtPropertySheet& sheet,
                          const std::vector<session::DirectoryObject>& objects) {
  if (!sheet.isVisible() || sheet.HasUnsavedEdits()) return;
  const std::size_t page = sheet.CurrentPage();
  sheet.reject();
  ShowProperties(objects);
  const QList<QtPropertySheet*> open = sheets_.Open();
  if (!open.isEmpty()) open.back()->SelectPage(page);
}

void MainWindow::ShowAnother(const session::DirectoryObject& object, QWidget& from) {
  if (!from.isModal()) return ShowProperties(std::span(&object, 1));
  // Nothing beside a modal window can be used: over it, the sheet is waited for.
  const SheetResult made = MakePropertySheet(std::span(&object, 1), directory_->session->specifiers,
                                             {.store = directory_->store,
                                              .platform = directory_->platform.platform(),
                                              .templates = module_,
                                              .errands = &errands_,
                                              .desk = &desk_,
                                              .history = &directory_->history,
                                              .open_another = directory_->session->open_another},
                                             &from);
  if (!made.sheet) {
    return ReportLater(QStringLiteral("There are no properties to show."), made.error);
  }
  made.sheet->machine().on_applied = [this] { pane_->RefreshList(); };
  made.sheet->exec();
}

void MainWindow::MakeNewObject(const session::NewObjectKind& kind) {
  const std::optional<session::DirectoryObject> container = pane_->PlaceForNew();
  if (!directory_ || !container) return;
  WizardResult made = MakeNewObjectWizard(
      kind, *container, {.store = directory_->store, .specifiers = directory_->session->specifiers},
      directory_->platform.platform(), module_, this);
  if (!made.wizard) return ReportLater(QStringLiteral("There is no wizard."), made.error);
  const bool is_made = made.wizard->exec() == QDialog::Accepted;
  if (is_made) ShowNewObject(kind, container->dn, made.wizard->created_name());
  made.wizard.reset();
  // A directory that was opened meanwhile need not wait any longer.
  openings_.ShowOpened();
}

void MainWindow::ShowNewObject(const session::NewObjectKind& kind, const std::string& container,
                               const std::string& dn) {
  pane_->SelectWhenRead(dn);
  const session::DirectoryObject* const shown = pane_->Container();
  if (shown == nullptr || shown->dn != container) return pane_->RefreshAt(container);
  // A container stands in the tree as well.
  const std::array classes = {std::string(kind.class_name)};
  session::KindOf(classes).is_container ? pane_->Refresh() : pane_->RefreshList();
}

void MainWindow::UpdateActions() {
  const std::vector<session::DirectoryObject> selection = Selection();
  const std::vector<session::DirectoryObject> listed = pane_->list().Selection();
  const QString reason =
      directory_ ? ToQString(session::WhyNoProperties(selection, directory_->session->specifiers))
                 : QStringLiteral("No directory is open.");
  properties_->setEnabled(reason.isEmpty());
  const QString tip =
      reason.isEmpty() ? QStringLiteral("Show the properties of the selection") : reason;
  properties_->setStatusTip(tip);
  properties_->setToolTip(PlainToolTip(tip));
  open_container_->setEnabled(listed.size() == 1 && listed.front().kind.is_container);
  for (QAction* action : {refresh_, undo_, redo_, past_}) action->setEnabled(directory_ != nullptr);
  const std::optional<session::DirectoryObject> place = pane_->PlaceForNew();
  new_menu_->menuAction()->setEnabled(place.has_value());
  if (place) {
    new_menu_->menuAction()->setStatusTip(
        QStringLiteral("Create an object in %1").arg(Readable(ToQString(place->name))));
  }
  parent_->setEnabled(pane_->HasParent());
  places_->Update();
  attributes_->setEnabled(directory_ && selection.size() == 1);

  stop_->setEnabled(pane_->state() == ContainerListing::State::kReading || openings_.IsOpening());
  count_->setText(directory_ ? pane_->CountText() : QString());
  const QString opening = QStringLiteral("Opening %1...").arg(openings_.name());
  hint_->setText(openings_.IsOpening() ? opening : listed.empty() ? QString() : reason);
}

void MainWindow::AskForFile() {
  const bool is_file = session() != nullptr && session()->is_file;
  const QString folder = is_file ? QFileInfo(ToQString(session()->path)).path() : QString();
  const QString path =
      QFileDialog::getOpenFileName(this, QStringLiteral("Open Directory File"), folder,
                                   QStringLiteral("Directory files (*.ldb);;All files (*)"));
  if (!path.isEmpty()) OpenFile(path);
}

void MainWindow::AskForServer() {
  const bool is_server = session() != nullptr && !session()->is_file;
  ConnectDialog dialog(is_server ? ToQString(session()->path) : QString(), this);
  if (dialog.exec() == QDialog::Accepted) OpenServerBesides(dialog.Server());
}

void MainWindow::OpenServerBesides(const QString& server, std::function<void()> on_shown) {
  const QString name = server.isEmpty() ? QStringLiteral("The domain") : server;
  OpenBesides(
      name,
      [server = ToUtf8(server)](const std::stop_token& stop) {
        return session::OpenServer(server, stop);
      },
      std::move(on_shown));
}

void MainWindow::ShowAbout() {
  QMessageBox::about(
      this, QStringLiteral("About Pelora Console"),
      QStringLiteral("<b>Pelora Console %1</b><p>Administration of the Pelora groupware's settings "
                     "in the directory.</p><p>Licence: Apache-2.0</p>")
          .arg(QLatin1String(PELORA_VERSION)));
}

void MainWindow::ReportLater(const QString& text, const QString& reason) {
  // One server that is gone fails the tree and the list alike: that is said once.
  const QString report = text + QLatin1Char('\n') + reason;
  if (reports_.contains(report)) return;
  // Not at once: what failed may be on the stack of a view that is being drawn.
  const auto show = [this, text, reason, report] {
    const auto forget = qScopeGuard([&] { reports_.remove(report); });
    QMessageBox box(QMessageBox::Critical, QStringLiteral("Pelora Console"), {}, QMessageBox::Ok,
                    this);
    box.setObjectName(QStringLiteral("failure_box"));
    SetPlainTexts(box, text, reason);
    box.exec();
  };
  QMetaObject::invokeMethod(this, show, Qt::QueuedConnection);
  reports_.insert(report);
}

void MainWindow::closeEvent(QCloseEvent* event) {
  // Whoever waits needs all of this.
  event->setAccepted(!errands_.IsRunning() && sheets_.CloseAll());
  if (event->isAccepted()) Remember();
}

}  // namespace pelora::console
