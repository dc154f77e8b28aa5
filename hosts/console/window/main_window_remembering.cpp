// SPDX-License-Identifier: Apache-2.0
// What the window remembers from one start to the next, and files that are dropped on it.
#include <QAction>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <algorithm>
#include <array>

#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/main_window.h"

namespace pelora::console {
namespace {

constexpr const char* kGeometry = "window/geometry";
constexpr const char* kState = "window/state";
constexpr const char* kSplit = "window/split";
/// "file", "server" or "domain", a blank, and the name.
constexpr const char* kLast = "last/directory";
constexpr QLatin1String kFile("file ");
constexpr QLatin1String kServer("server ");
/// Of a server that was found: another one may be nearer next time.
constexpr QLatin1String kDomain("domain ");

QString Key(const char* name) { return QString::fromLatin1(name); }

/// The directory file that is being dropped; empty when it is anything else.
QString DroppedFile(const QMimeData& data) {
  const QList<QUrl> dropped = data.urls();
  if (dropped.size() != 1 || !dropped.front().isLocalFile()) return {};
  const QString path = dropped.front().toLocalFile();
  return path.endsWith(QLatin1String(".ldb"), Qt::CaseInsensitive) ? path : QString();
}

}  // namespace

void MainWindow::Recall() {
  setAcceptDrops(true);
  const Remembered& remembered = pane_->remembered();
  // What cannot be used changes nothing.
  restoreGeometry(remembered.Bytes(Key(kGeometry)));
  restoreState(remembered.Bytes(Key(kState)));
  pane_->restoreState(remembered.Bytes(Key(kSplit)));
  last_ = QString::fromUtf8(remembered.Bytes(Key(kLast)));
  const bool is_known =
      std::ranges::any_of(std::array{kFile, kServer, kDomain},
                          [this](QLatin1String kind) { return last_.startsWith(kind); });
  open_last_->setVisible(is_known);
  const QString name = last_.mid(last_.indexOf(QLatin1Char(' ')) + 1);
  const bool is_file = last_.startsWith(kFile);
  open_last_->setText(
      QStringLiteral("Open &Again: %1")
          .arg(AsPlainLabel(Readable(is_file ? QFileInfo(name).fileName() : name))));
}

void MainWindow::Remember() {
  Remembered& remembered = pane_->remembered();
  remembered.SetBytes(Key(kGeometry), saveGeometry());
  remembered.SetBytes(Key(kState), saveState());
  remembered.SetBytes(Key(kSplit), pane_->saveState());
  RememberContainer();
  if (session() == nullptr) return;
  QString last;
  if (session()->is_file) {
    last = kFile + ToQString(session()->path);
  } else if (session()->Server().is_named) {
    last = kServer + ToQString(session()->path);
  } else {
    const std::string& user = session()->user;
    last = kDomain + ToQString(user.substr(user.find('@') + 1));
  }
  remembered.SetBytes(Key(kLast), last.toUtf8());
}

QString MainWindow::ContainerKey() const {
  const QByteArray name = QByteArray::fromStdString(directory_->name).toPercentEncoding();
  return QStringLiteral("containers/%1").arg(QString::fromLatin1(name));
}

void MainWindow::RememberContainer() {
  const session::DirectoryObject* const container = pane_->Container();
  if (session() == nullptr || container == nullptr) return;
  pane_->remembered().SetBytes(ContainerKey(), QByteArray::fromStdString(container->dn));
}

void MainWindow::RecallContainer() {
  pane_->Recall(pane_->remembered().Bytes(ContainerKey()).toStdString());
}

void MainWindow::OpenLast() {
  const QString name = last_.mid(last_.indexOf(QLatin1Char(' ')) + 1);
  if (last_.startsWith(kFile)) {
    OpenFile(name);
  } else {
    // The ticket says of which domain one is to be found.
    OpenServerBesides(last_.startsWith(kDomain) ? QString() : name);
  }
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (!DroppedFile(*event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
  const QString path = DroppedFile(*event->mimeData());
  if (path.isEmpty()) return;
  event->acceptProposedAction();
  // Not within the drop: a failure is told in a box, and who dropped waits for the end.
  QMetaObject::invokeMethod(
      this, [this, path] { OpenFile(path); }, Qt::QueuedConnection);
}

}  // namespace pelora::console
