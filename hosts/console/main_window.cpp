// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QStatusBar>
#include <QTreeView>
#include <algorithm>
#include <utility>

#include "hosts/console/connect_dialog.h"
#include "hosts/console/object_icons.h"
#include "hosts/console/qt_text.h"
#include "hosts/session/property_tabs.h"

namespace pelora::console {

MainWindow::MainWindow(const resources::ResourceFile& module) : module_(module) {
  setWindowTitle(QStringLiteral("Pelora Console"));
  setWindowIcon(IconOf(session::ObjectIcon::kDomain));
  MakePanes();
  MakeActions();
  MakeNewMenu();
  MakeMenus();
  listing_->on_changed = [this] {
    const bool is_read = listing_->state() != ContainerListing::State::kReading;
    if (is_read && !select_when_read_.empty()) {
      list_->Select({std::exchange(select_when_read_, {})});
    }
    UpdateActions();
  };
  listing_->on_failed = [this](const QString& reason) {
    const QModelIndex container = tree_->currentIndex();
    const QString name =
        container.isValid() ? ToQString(tree_model_->ObjectAt(container).name) : QString();
    ReportLater(QStringLiteral("The contents of %1 cannot be read.").arg(name), reason);
  };
  count_ = new QLabel(this);
  hint_ = new QLabel(this);
  statusBar()->addWidget(count_);
  statusBar()->addPermanentWidget(hint_);
  UpdateActions();
}

MainWindow::~MainWindow() {
  // The focus moves on while the window's parts go one by one.
  disconnect(qApp, nullptr, this, nullptr);
  // The tree still looks at its model, and the sheets at the session.
  tree_->setModel(nullptr);
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
}

bool MainWindow::IsOpening() const {
  return std::ranges::any_of(openings_, [](const auto& opening) { return opening->IsRunning(); });
}

void MainWindow::FinishOpening(session::SessionResult result,
                               const std::function<void()>& on_shown) {
  if (is_creating_) {
    const auto kept = std::make_shared<session::SessionResult>(std::move(result));
    show_opened_ = [this, kept, on_shown] { FinishOpening(std::move(*kept), on_shown); };
    return;
  }
  if (!result.session) {
    ReportLater(QStringLiteral("%1 cannot be opened.").arg(opened_name_), ToQString(result.error));
  } else if (SetSession(std::move(result.session)) && on_shown) {
    on_shown();
  }
  UpdateActions();
}

bool MainWindow::SetSession(std::unique_ptr<session::DirectorySession> session) {
  const session::DirectoryBrowser browser(*session->store);
  session::DirectoryObject base;
  if (const ldap::StoreStatus status = browser.ReadBase(base); !status.Ok()) {
    ReportLater(QStringLiteral("The directory cannot be read."), ToQString(status.text));
    return false;
  }
  // Only now: a directory that cannot be read costs nobody his open sheets.
  if (!sheets_.CloseAll()) return false;
  const auto on_failure = [this](const session::DirectoryObject& container, const QString& reason) {
    ReportLater(QStringLiteral("The contents of %1 cannot be read.").arg(ToQString(container.name)),
                reason);
  };
  auto reader = std::make_unique<DirectoryReader>(session->open_another);
  auto model = std::make_unique<ContainerTreeModel>(*reader, std::move(base), on_failure);
  model->SetAdvanced(advanced_->isChecked());
  tree_->setModel(model.get());
  tree_model_ = std::move(model);
  tree_reader_ = std::move(reader);
  listing_->SetReader(nullptr);
  list_reader_ = std::make_unique<DirectoryReader>(session->open_another);
  listing_->SetReader(list_reader_.get());
  platform_.reset();
  choosers_.emplace(*session->store, session->open_another);
  platform_.emplace(session->service, message_box_, *choosers_, module_);
  session_ = std::move(session);
  connect(tree_->selectionModel(), &QItemSelectionModel::currentChanged, this,
          &MainWindow::ShowContainer);
  const QString path = ToQString(session_->path);
  const QString name = session_->is_file ? QFileInfo(path).fileName() : path;
  setWindowTitle(QStringLiteral("%1 - Pelora Console").arg(name));
  tree_->setCurrentIndex(tree_model_->BaseIndex());
  tree_->expand(tree_model_->BaseIndex());
  return true;
}

std::vector<session::DirectoryObject> MainWindow::Selection() const {
  std::vector<session::DirectoryObject> selected = list_->Selection();
  const QModelIndex container = tree_->currentIndex();
  if ((tree_used_last_ || selected.empty()) && container.isValid()) {
    return {tree_model_->ObjectAt(container)};
  }
  return selected;
}

void MainWindow::ShowContainer() {
  const QModelIndex container = tree_->currentIndex();
  if (!container.isValid()) return;
  listing_->Show(
      {.container = tree_model_->ObjectAt(container).dn, .advanced = advanced_->isChecked()});
}

bool MainWindow::IsReading() const {
  return listing_->state() == ContainerListing::State::kReading ||
         (tree_model_ && tree_model_->IsReading());
}

void MainWindow::StopReading() {
  StopOpening();
  listing_->Stop();
  UpdateActions();
}

void MainWindow::ShowAdvanced(bool advanced) {
  if (!session_) return;
  tree_model_->SetAdvanced(advanced);
  RefreshAll();
}

void MainWindow::RefreshAll() {
  if (!session_) return;
  // While one refresh is under way no container is current; another one leads to the same.
  if (tree_->currentIndex().isValid()) refreshed_path_.clear();
  for (QModelIndex step = tree_->currentIndex(); step.parent().isValid(); step = step.parent()) {
    refreshed_path_.insert(refreshed_path_.begin(), tree_model_->ObjectAt(step).dn);
  }
  tree_model_->Reload();
  FollowPath(tree_model_->BaseIndex(), refreshed_path_);
}

void MainWindow::FollowPath(const QModelIndex& container, std::vector<std::string> path) {
  tree_->expand(container);
  // Nothing is current until the path has been followed, so that this shows the container anew.
  if (path.empty()) return tree_->setCurrentIndex(container);
  const std::string next = path.front();
  path.erase(path.begin());
  tree_model_->FindChild(container, next,
                         [this, from = QPersistentModelIndex(container),
                          path = std::move(path)](const QModelIndex& found) mutable {
                           // The administrator may have gone elsewhere meanwhile.
                           if (tree_->currentIndex().isValid()) return;
                           if (found.isValid()) return FollowPath(found, std::move(path));
                           tree_->setCurrentIndex(from);
                         });
}

void MainWindow::OpenSelection() {
  const std::vector<session::DirectoryObject> selected = list_->Selection();
  if (selected.size() != 1 || !selected.front().kind.is_container) {
    return properties_->isEnabled() ? ShowProperties(selected) : void();
  }
  const QModelIndex current = tree_->currentIndex();
  const auto go = [this, from = QPersistentModelIndex(current)](const QModelIndex& child) {
    // Not if the administrator has gone elsewhere meanwhile.
    if (!child.isValid() || tree_->currentIndex() != from) return;
    tree_->expand(from);
    tree_->setCurrentIndex(child);
  };
  tree_model_->FindChild(current, selected.front().dn, go);
}

void MainWindow::GoToParent() {
  const QModelIndex parent = tree_->currentIndex().parent();
  if (parent.isValid()) tree_->setCurrentIndex(parent);
}

void MainWindow::ShowProperties(std::span<const session::DirectoryObject> selection) {
  if (!session_) return;
  QStringList names;
  for (const session::DirectoryObject& object : selection) names.append(ToQString(object.dn));
  const QString key = names.join(QLatin1Char('\n'));
  if (sheets_.Raise(key)) return;
  SheetResult made = MakePropertySheet(
      selection, session_->specifiers,
      {.store = *session_->store, .platform = platform_->platform(), .templates = module_}, this);
  if (!made.sheet) {
    return ReportLater(QStringLiteral("There are no properties to show."), made.error);
  }
  made.sheet->machine().on_applied = [this] { listing_->Refresh(); };
  sheets_.Show(std::move(made.sheet), key);
}

void MainWindow::UpdateActions() {
  const std::vector<session::DirectoryObject> selection = Selection();
  const std::vector<session::DirectoryObject> listed = list_->Selection();
  const QString reason = session_
                             ? ToQString(session::WhyNoProperties(selection, session_->specifiers))
                             : QStringLiteral("No directory is open.");
  properties_->setEnabled(reason.isEmpty());
  const QString tip =
      reason.isEmpty() ? QStringLiteral("Show the properties of the selection") : reason;
  properties_->setStatusTip(tip);
  properties_->setToolTip(tip);
  open_container_->setEnabled(listed.size() == 1 && listed.front().kind.is_container);
  refresh_->setEnabled(session_ != nullptr);
  new_menu_->menuAction()->setEnabled(tree_->currentIndex().isValid());
  parent_->setEnabled(tree_->currentIndex().parent().isValid());

  stop_->setEnabled(listing_->state() == ContainerListing::State::kReading || IsOpening());
  count_->setText(session_ ? CountText(listed.size()) : QString());
  const QString opening = QStringLiteral("Opening %1...").arg(opened_name_);
  hint_->setText(IsOpening() ? opening : listed.empty() ? QString() : reason);
}

QString MainWindow::CountText(std::size_t selected) const {
  const int shown = list_->ShownCount();
  const int all = list_->Count();
  QString count = shown == all ? QStringLiteral("%1 objects").arg(all)
                               : QStringLiteral("%1 of %2 objects").arg(shown).arg(all);
  if (selected > 0) count += QStringLiteral(", %1 selected").arg(selected);
  switch (listing_->state()) {
    case ContainerListing::State::kReading:
      return count + QStringLiteral(", reading...");
    case ContainerListing::State::kStopped:
      return count + QStringLiteral(", stopped before the end");
    case ContainerListing::State::kCutShort:
      return count + QStringLiteral(", the directory gives no more");
    case ContainerListing::State::kFailed:
      return count + QStringLiteral(", the rest cannot be read");
    case ContainerListing::State::kWhole:
      break;
  }
  return count;
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
  reports_.insert(report);
  // Not at once: what failed may be on the stack of a view that is being drawn.
  const auto show = [this, text, reason, report] {
    QMessageBox box(QMessageBox::Critical, QStringLiteral("Pelora Console"), text, QMessageBox::Ok,
                    this);
    box.setObjectName(QStringLiteral("failure_box"));
    box.setInformativeText(reason);
    box.exec();
    reports_.remove(report);
  };
  QMetaObject::invokeMethod(this, show, Qt::QueuedConnection);
}

void MainWindow::closeEvent(QCloseEvent* event) { event->setAccepted(sheets_.CloseAll()); }

}  // namespace pelora::console
