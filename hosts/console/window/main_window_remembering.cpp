// SPDX-License-Identifier: Apache-2.0
// What the window remembers from one start to the next, and files that are dropped on it.
#include <QAction>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>

#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/main_window.h"

namespace pelora::console {
namespace {

constexpr const char* kGeometry = "window/geometry";
constexpr const char* kState = "window/state";
constexpr const char* kSplit = "window/split";
/// "file" or "server", a blank, and the name.
constexpr const char* kLast = "last/directory";
constexpr QLatin1String kFile("file ");
constexpr QLatin1String kServer("server ");

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
  open_last_->setVisible(last_.startsWith(kFile) || last_.startsWith(kServer));
  const QString name = last_.mid(last_.indexOf(QLatin1Char(' ')) + 1);
  const bool is_file = last_.startsWith(kFile);
  open_last_->setText(QStringLiteral("Open &Again: %1")
                          .arg(name.isEmpty() ? QStringLiteral("the domain")
                                              : AsPlainLabel(Readable(
                                                    is_file ? QFileInfo(name).fileName() : name))));
}

void MainWindow::Remember() {
  Remembered& remembered = pane_->remembered();
  remembered.SetBytes(Key(kGeometry), saveGeometry());
  remembered.SetBytes(Key(kState), saveState());
  remembered.SetBytes(Key(kSplit), pane_->saveState());
  RememberContainer();
  if (session() == nullptr) return;
  // A server that was found is found anew: another one may be the nearest by then, or the only one.
  const bool is_found = !session()->is_file && !session()->Server().is_named;
  const QString name = is_found ? QString() : ToQString(session()->path);
  const QString last = (session()->is_file ? kFile : kServer) + name;
  remembered.SetBytes(Key(kLast), last.toUtf8());
}

QString MainWindow::ContainerKey() const {
  const QByteArray name = ToQString(session()->path).toUtf8().toPercentEncoding();
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
    OpenServerBesides(name);
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
