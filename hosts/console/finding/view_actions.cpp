// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/finding/view_actions.h"

#include <QAction>
#include <QClipboard>
#include <QFileDialog>
#include <QGuiApplication>
#include <QSaveFile>
#include <QTreeView>
#include <algorithm>

#include "hosts/console/finding/view_editor.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/directory_pane.h"
#include "hosts/ldap/case_fold.h"

namespace pelora::console {
namespace {

constexpr const char* kViewFiles = "Views (*.json);;All files (*)";
constexpr const char* kTables = "Tables (*.csv);;All files (*)";

bool IsSameName(const std::string& left, const std::string& right) {
  return ldap::FoldCase(left) == ldap::FoldCase(right);
}

/// Puts a view in place of the one of its name, or behind the others.
void Put(session::View view, std::vector<session::View>& views) {
  const auto same = std::ranges::find_if(
      views, [&view](const session::View& known) { return IsSameName(known.name, view.name); });
  if (same != views.end()) {
    *same = std::move(view);
  } else {
    views.push_back(std::move(view));
  }
}

}  // namespace

ViewActions::ViewActions(DirectoryPane& pane) : QObject(&pane), pane_(pane) {
  Add("&Columns...", "", "Choose what the list shows of each object", nullptr);
  connect(actions_.back(), &QAction::triggered, &pane_, [this] { pane_.ChooseColumns(); });
  AddSeparator();
  Add("Cop&y Rows", "Ctrl+C", "Copy the selected rows, or all, as text", &ViewActions::Copy);
  Add("Copy D&istinguished Names", "Ctrl+Shift+C",
      "Copy the distinguished names of the selected objects", &ViewActions::CopyNames);
  copy_names_ = actions_.back();
  Add("&Export Table...", "",
      "Write the selected objects, or all, as a table that peloractl applies",
      &ViewActions::WriteTable);
  AddSeparator();
  Add("Save Vie&w...", "", "Keep what is shown under a name", &ViewActions::SaveView);
  Add("&Delete View", "", "Take the chosen view out", &ViewActions::DeleteView);
  Add("&Give Views Away...", "", "Write your views to a file for others", &ViewActions::GiveViews);
  Add("&Take Views...", "", "Add the views of a file to yours", &ViewActions::TakeViews);
  // In the list alone: a text field copies its own text.
  for (QAction* action : actions_) {
    if (action->shortcut().isEmpty()) continue;
    if (action == copy_names_) pane_.tree().addAction(action);
    action->setShortcutContext(Qt::WidgetShortcut);
    pane_.list().view().addAction(action);
  }
}

void ViewActions::Add(const char* text, const char* keys, const char* tip,
                      void (ViewActions::*slot)()) {
  auto* action = new QAction(QString::fromLatin1(text), this);
  action->setStatusTip(QString::fromLatin1(tip));
  action->setShortcut(QKeySequence(QString::fromLatin1(keys)));
  if (slot != nullptr) connect(action, &QAction::triggered, this, slot);
  actions_.append(action);
}

void ViewActions::AddSeparator() {
  auto* line = new QAction(this);
  line->setSeparator(true);
  actions_.append(line);
}

void ViewActions::Copy() { QGuiApplication::clipboard()->setText(pane_.list().AsText()); }

void ViewActions::CopyNames() {
  QStringList names;
  for (const session::DirectoryObject& object : pane_.Selection()) {
    names.append(ToQString(object.dn));
  }
  QGuiApplication::clipboard()->setText(names.join(QLatin1Char('\n')));
}

QString ViewActions::AskForPath(bool saves, const char* title, const char* kinds) const {
  const QString text = QString::fromLatin1(title);
  const QString filter = QString::fromLatin1(kinds);
  return saves ? QFileDialog::getSaveFileName(&pane_, text, {}, filter)
               : QFileDialog::getOpenFileName(&pane_, text, {}, filter);
}

void ViewActions::WriteTable() {
  const QString path = AskForPath(true, "Export Table", kTables);
  if (path.isEmpty()) return;
  QSaveFile file(path);
  const QByteArray table = QByteArray::fromStdString(pane_.list().AsCsv());
  const bool written =
      file.open(QIODevice::WriteOnly) && file.write(table) == table.size() && file.commit();
  if (!written) Complain(QStringLiteral("The table cannot be written."), file.errorString());
}

void ViewActions::SaveView() {
  session::View view = pane_.ShownView();
  if (!EditView(view, &pane_)) return;
  std::vector<session::View> views = pane_.find().user_views();
  const QString name = ToQString(view.name);
  Put(std::move(view), views);
  if (!Keep(std::move(views))) return;
  (void)pane_.find().ShowView(name, {});
}

void ViewActions::DeleteView() {
  std::vector<session::View> views = pane_.find().user_views();
  const std::string name = pane_.find().View().view.name;
  std::erase_if(views, [&name](const session::View& view) { return view.name == name; });
  if (views.size() == pane_.find().user_views().size()) {
    return Complain(QStringLiteral("The view cannot be deleted."),
                    QStringLiteral("Only views that you have saved can be."));
  }
  if (Keep(std::move(views))) pane_.find().on_asked();
}

void ViewActions::GiveViews() {
  const QString path = AskForPath(true, "Give Views Away", kViewFiles);
  if (path.isEmpty()) return;
  const std::string error =
      session::SaveViews(QFile::encodeName(path).toStdString(), pane_.find().user_views());
  if (!error.empty()) Complain(QStringLiteral("The views cannot be written."), ToQString(error));
}

void ViewActions::TakeViews() {
  const QString path = AskForPath(false, "Take Views", kViewFiles);
  if (path.isEmpty()) return;
  session::ReadViews read = session::LoadViews(QFile::encodeName(path).toStdString());
  if (!read.error.empty()) {
    return Complain(QStringLiteral("The views cannot be read."), ToQString(read.error));
  }
  std::vector<session::View> views = pane_.find().user_views();
  for (session::View& view : read.views) Put(std::move(view), views);
  Keep(std::move(views));
}

bool ViewActions::Keep(std::vector<session::View> views) {
  const QString error = pane_.remembered().SetViews(views);
  if (!error.isEmpty()) {
    Complain(QStringLiteral("The views cannot be kept."), error);
    return false;
  }
  pane_.find().SetUserViews(std::move(views));
  return true;
}

void ViewActions::Complain(const QString& text, const QString& reason) const {
  if (pane_.on_failure) pane_.on_failure(text, reason);
}

}  // namespace pelora::console
