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
#include <QThread>
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <utility>

#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/connect_dialog.h"
#include "hosts/console/window/object_icons.h"
#include "hosts/session/property_tabs.h"

namespace pelora::console {
namespace {

/// After so long it is looked again whether something modal still runs.
constexpr std::chrono::milliseconds kPatience{50};

/// Whether a dialog, a box or a menu is waited for, or has been and its caller is not through yet.
bool IsModalRunning() {
  constexpr int kMainLoop = 1;
  return QApplication::activeModalWidget() != nullptr ||
         QThread::currentThread()->loopLevel() > kMainLoop;
}

}  // namespace

MainWindow::MainWindow(const resources::ResourceFile& module) : module_(module) {
  setWindowTitle(QStringLiteral("Pelora Console"));
  setWindowIcon(IconOf(session::ObjectIcon::kDomain));
  MakePane();
  MakeActions();
  MakeNewMenu();
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
  until_shown_.setInterval(kPatience);
  connect(&until_shown_, &QTimer::timeout, this, &MainWindow::ShowOpened);
  pane_->on_changed = [this] { UpdateActions(); };
  pane_->on_failure = [this](const QString& text, const QString& reason) {
    ReportLater(text, reason);
  };
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
  StopOpening();
  opened_name_ = name;
  openings_.push_back(std::make_unique<SessionOpening>(
      std::move(open), [this, on_shown = std::move(on_shown)](session::SessionResult result) {
        FinishOpening(std::move(result), on_shown);
      }));
  UpdateActions();
}

void MainWindow::StopOpening() {
  for (const auto& opening : openings_) opening->Stop();
  opened_.reset();
}

bool MainWindow::IsOpening() const {
  return opened_.has_value() ||
         std::ranges::any_of(openings_, [](const auto& opening) { return opening->IsRunning(); });
}

void MainWindow::FinishOpening(session::SessionResult result, std::function<void()> on_shown) {
  opened_ = Opened{.result = std::move(result), .on_shown = std::move(on_shown)};
  ShowOpened();
}

void MainWindow::ShowOpened() {
  if (opened_ && IsModalRunning()) return until_shown_.start();
  until_shown_.stop();
  if (!opened_) return;
  Opened opened = *std::exchange(opened_, std::nullopt);
  if (!opened.result.session) {
    ReportLater(QStringLiteral("%1 cannot be opened.").arg(opened_name_),
                ToQString(opened.result.error));
  } else if (SetSession(std::move(opened.result.session)) && opened.on_shown) {
    opened.on_shown();
  }
  UpdateActions();
}

bool MainWindow::SetSession(std::unique_ptr<session::DirectorySession> session) {
  auto store = std::make_unique<session::BesideStore>(*session->store, errands_);
  const session::DirectoryBrowser browser(*store);
  session::DirectoryObject base;
  if (const ldap::StoreStatus status = browser.ReadBase(base); !status.Ok()) {
    ReportLater(QStringLiteral("The directory cannot be read."), ToQString(status.text));
    return false;
  }
  // Only now: a directory that cannot be read costs nobody his open sheets.
  if (!sheets_.CloseAll()) return false;
  pane_->EndDirectory();
  fields_.reset();
  platform_.reset();
  choosers_.emplace(*store, session->open_another);
  service_.emplace(*store);
  platform_.emplace(*service_, message_box_, *choosers_, module_);
  fields_.emplace(session->specifiers, platform_->platform(), module_);
  store_ = std::move(store);
  session_ = std::move(session);
  const std::string directory =
      session_->is_file ? std::filesystem::absolute(session_->path).string() : session_->path;
  history_.emplace(session::ChangesFolder(), directory, session_->store->schema());
  const QString path = ToQString(session_->path);
  const QString name = session_->is_file ? QFileInfo(path).fileName() : path;
  setWindowTitle(QStringLiteral("%1 - Pelora Console").arg(name));
  who_->setText(session_->user.empty()
                    ? QStringLiteral("Directory file %1").arg(Readable(name))
                    : QStringLiteral("%1 on %2").arg(Readable(ToQString(session_->user)), name));
  pane_->ShowDirectory(std::move(base), session_->open_another, &*fields_);
  return true;
}

void MainWindow::StopReading() {
  StopOpening();
  pane_->StopReading();
  UpdateActions();
}

void MainWindow::OpenSelection() {
  const std::vector<session::DirectoryObject> selected = pane_->list().Selection();
  if (selected.size() != 1 || !selected.front().kind.is_container) {
    return properties_->isEnabled() ? ShowProperties(selected) : void();
  }
  if (pane_->find().IsAsking()) return pane_->GoTo(selected.front().dn);
  pane_->GoToChild(selected.front().dn);
}

void MainWindow::ShowProperties(std::span<const session::DirectoryObject> selection) {
  if (!session_) return;
  QStringList names;
  for (const session::DirectoryObject& object : selection) names.append(ToQString(object.dn));
  const QString key = names.join(QLatin1Char('\n'));
  if (sheets_.Raise(key)) return;
  SheetResult made = MakePropertySheet(
      selection, session_->specifiers,
      {.store = *store_,
       .platform = platform_->platform(),
       .templates = module_,
       .errands = &errands_,
       .desk = &desk_,
       .history = &*history_,
       .open_another = session_->open_another},
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
    if (!history_->failure().empty()) {
      statusBar()->showMessage(QStringLiteral("This change cannot be taken back: %1")
                                   .arg(Readable(ToQString(history_->failure()))));
    }
    if (!is_outdated()) return;
    // Later: the sheet stands on the stack.
    QMetaObject::invokeMethod(
        sheet, [this, sheet, objects] { OpenAnew(*sheet, objects); }, Qt::QueuedConnection);
  };
  sheets_.Show(std::move(made.sheet), key);
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
  const SheetResult made = MakePropertySheet(std::span(&object, 1), session_->specifiers,
                                             {.store = *store_,
                                              .platform = platform_->platform(),
                                              .templates = module_,
                                              .errands = &errands_,
                                              .desk = &desk_,
                                              .history = &*history_,
                                              .open_another = session_->open_another},
                                             &from);
  if (!made.sheet) {
    return ReportLater(QStringLiteral("There are no properties to show."), made.error);
  }
  made.sheet->machine().on_applied = [this] { pane_->RefreshList(); };
  made.sheet->exec();
}

void MainWindow::UpdateActions() {
  const std::vector<session::DirectoryObject> selection = Selection();
  const std::vector<session::DirectoryObject> listed = pane_->list().Selection();
  const QString reason = session_
                             ? ToQString(session::WhyNoProperties(selection, session_->specifiers))
                             : QStringLiteral("No directory is open.");
  properties_->setEnabled(reason.isEmpty());
  const QString tip =
      reason.isEmpty() ? QStringLiteral("Show the properties of the selection") : reason;
  properties_->setStatusTip(tip);
  properties_->setToolTip(PlainToolTip(tip));
  open_container_->setEnabled(listed.size() == 1 && listed.front().kind.is_container);
  for (QAction* action : {refresh_, undo_, redo_, past_}) action->setEnabled(session_ != nullptr);
  new_menu_->menuAction()->setEnabled(pane_->Container() != nullptr);
  parent_->setEnabled(pane_->HasParent());

  stop_->setEnabled(pane_->state() == ContainerListing::State::kReading || IsOpening());
  count_->setText(session_ ? pane_->CountText() : QString());
  const QString opening = QStringLiteral("Opening %1...").arg(opened_name_);
  hint_->setText(IsOpening() ? opening : listed.empty() ? QString() : reason);
}

void MainWindow::AskForFile() {
  const bool is_file = session_ && session_->is_file;
  const QString folder = is_file ? QFileInfo(ToQString(session_->path)).path() : QString();
  const QString path =
      QFileDialog::getOpenFileName(this, QStringLiteral("Open Directory File"), folder,
                                   QStringLiteral("Directory files (*.ldb);;All files (*)"));
  if (!path.isEmpty()) OpenFile(path);
}

void MainWindow::AskForServer() {
  ConnectDialog dialog(session_ && !session_->is_file ? ToQString(session_->path) : QString(),
                       this);
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
