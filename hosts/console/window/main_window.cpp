// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/window/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDateTime>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QScopeGuard>
#include <QStatusBar>
#include <QToolButton>
#include <optional>
#include <utility>

#include "hosts/console/attributes/attributes_window.h"
#include "hosts/console/commands/run_commands.h"
#include "hosts/console/dialogs/name_label.h"
#include "hosts/console/dialogs/qt_dialog.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/connect_dialog.h"
#include "hosts/console/window/object_icons.h"
#include "hosts/session/connection_status.h"
#include "hosts/session/own_pages/own_pages.h"
#include "hosts/session/property_tabs.h"

namespace pelora::console {
MainWindow::MainWindow(const resources::ResourceFile& module)
    : module_(module), templates_(session::WithOwnPages(module).value.value()) {
  setWindowTitle(QStringLiteral("Pelora Console"));
  setWindowIcon(IconOf(session::ObjectIcon::kDomain));
  MakePane();
  MakeActions();
  MakePlaces();
  MakeMenus();
  count_ = new NameLabel(this);
  hint_ = new NameLabel(this);
  who_ = new NameLabel(this);
  who_->setObjectName(QStringLiteral("who"));
  Recall();
  statusBar()->addWidget(count_, 1);
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
  if (IsModalRunning()) {
    statusBar()->showMessage(
        QStringLiteral("Another directory can be opened when what is waited for is through."));
    return false;
  }
  auto shown =
      std::make_unique<ShownDirectory>(std::move(session), errands_, message_box_, module_);
  const session::DirectoryBrowser browser(shown->store);
  session::DirectoryObject base;
  if (const ldap::StoreStatus status = browser.ReadBase(base); !status.Ok()) {
    ReportLater(QStringLiteral("The directory cannot be read."), ToQString(status.text));
    return false;
  }
  // Only now: a directory that cannot be read costs nobody his open sheets.
  if (!sheets_.CloseAll()) {
    statusBar()->showMessage(
        QStringLiteral("The directory stays open: there are changes that were not applied."));
    return false;
  }
  // What they show is the other one's.
  for (AttributesWindow* const window : findChildren<AttributesWindow*>()) window->close();
  RememberContainer();
  pane_->EndDirectory();
  history_desk_.SetDirectory(&shown->history, &shown->store);
  directory_ = std::move(shown);
  ShowWho();
  pane_->ShowDirectory(std::move(base), directory_->session->open_another, &directory_->fields);
  RecallContainer();
  return true;
}

void MainWindow::ShowWho() {
  if (!directory_) return;
  const session::DirectorySession& open = *directory_->session;
  // Another server may have taken over meanwhile.
  const ldap::ChosenServer server = open.Server();
  const QString name = Readable(open.is_file ? QFileInfo(ToQString(open.path)).fileName()
                                             : ToQString(server.name.Text()));
  SetPlainTitle(*this, QStringLiteral("%1 - Pelora Console").arg(name));
  QString text = open.is_file
                     ? QStringLiteral("Directory file %1").arg(name)
                     : QStringLiteral("%1 on %2").arg(Readable(ToQString(open.user)), name);
  if (const auto writer = server.writer) {
    text += QStringLiteral(", changes go to %1").arg(ToQString(writer->Text()));
  }
  who_->setText(text);
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

void MainWindow::ChangeSelection() {
  if (!directory_) return;
  const QString reason = RunCommands(
      {.directory = *directory_, .errands = errands_, .desk = desk_, .message_box = message_box_},
      Selection(), this);
  if (!reason.isEmpty()) ReportLater(QStringLiteral("The objects cannot be read."), reason);
  pane_->RefreshList();
}

void MainWindow::UpdateActions() {
  const std::vector<session::DirectoryObject> selection = Selection();
  const std::vector<session::DirectoryObject> listed = pane_->list().Selection();
  const QString reason =
      directory_ ? ToQString(session::WhyNoProperties(selection, directory_->session->specifiers))
                 : QStringLiteral("No directory is open.");
  properties_->setEnabled(reason.isEmpty());
  commands_->setEnabled(directory_ && HasCommands(*directory_, selection));
  const QString tip =
      reason.isEmpty() ? QStringLiteral("Show the properties of the selection") : Readable(reason);
  properties_->setStatusTip(tip);
  properties_->setToolTip(PlainToolTip(tip));
  for (QObject* const shown : properties_->associatedObjects()) {
    if (auto* const button = qobject_cast<QToolButton*>(shown)) SetPlainToolTip(*button, tip);
  }
  open_container_->setEnabled(listed.size() == 1 && listed.front().kind.is_container);
  for (QAction* action : {refresh_, undo_, redo_, past_, connection_}) {
    action->setEnabled(directory_ != nullptr);
  }
  const std::optional<session::DirectoryObject> place = pane_->PlaceForNew();
  new_menu_->menuAction()->setEnabled(place.has_value());
  if (place) {
    new_menu_->menuAction()->setStatusTip(
        QStringLiteral("Create an object in %1").arg(Readable(ToQString(place->name))));
  }
  new_like_->setEnabled(directory_ && KindOfNewLike() != nullptr);
  users_below_->setEnabled(directory_ && place);
  parent_->setEnabled(pane_->HasParent());
  places_->Update();
  attributes_->setEnabled(directory_ && selection.size() == 1);

  stop_->setEnabled(pane_->state() == ContainerListing::State::kReading || openings_.IsOpening());
  count_->setText(directory_ ? pane_->CountText() : QString());
  ShowWho();
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
  // One that was found is found again by an empty line, or a nearer one.
  const bool is_named = session() != nullptr && session()->Server().is_named;
  ConnectDialog dialog(is_named ? ToQString(session()->path) : QString(), this);
  if (RunModal(dialog) == QDialog::Accepted) OpenServerBesides(dialog.Server());
}

void MainWindow::OpenServerBesides(const QString& server, std::function<void()> on_shown,
                                   const QString& site) {
  const QString name = server.isEmpty() ? QStringLiteral("The domain") : server;
  OpenBesides(
      name,
      [server = ToUtf8(server), site = ToUtf8(site)](const std::stop_token& stop) {
        return session::OpenServer(server, stop, site);
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

void MainWindow::ShowConnection() {
  if (!directory_) return;
  session::ConnectionStatus status;
  // What is known of the directory says neither how late it is there nor who answers by now.
  const ldap::StoreStatus read =
      session::ReadConnectionStatus(*directory_->session, directory_->beside, status);
  if (!read.Ok()) {
    return ReportLater(QStringLiteral("The directory cannot be asked."), ToQString(read.text));
  }
  QStringList lines;
  for (const session::ConnectionRow& row :
       session::ConnectionRows(status, QDateTime::currentSecsSinceEpoch())) {
    lines.append(QStringLiteral("%1: %2").arg(ToQString(row.label), ToQString(row.text)));
  }
  QMessageBox box(QMessageBox::Information, QStringLiteral("Connection"), {}, QMessageBox::Ok,
                  this);
  box.setObjectName(QStringLiteral("connection_box"));
  SetPlainTexts(box, QStringLiteral("This is what the window works with."),
                lines.join(QLatin1Char('\n')));
  RunModal(box);
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
    RunModal(box);
  };
  QMetaObject::invokeMethod(this, show, Qt::QueuedConnection);
  reports_.insert(report);
}

void MainWindow::closeEvent(QCloseEvent* event) {
  // Whoever waits, for the directory or for an answer, needs all of this.
  event->setAccepted(!errands_.IsRunning() && !IsModalRunning() && sheets_.CloseAll());
  if (event->isAccepted()) Remember();
}

}  // namespace pelora::console
