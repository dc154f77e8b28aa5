// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/sheets/sheet_windows.h"

#include <algorithm>

#include "hosts/console/dialogs/qt_dialog.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/ldap/case_fold.h"
#include "hosts/ldap/name_key.h"

namespace pelora::console {
namespace {

QString FoldedName(const std::string& dn) { return ToQString(ldap::FoldCase(dn)); }

/// The same for the same objects.
QStringList NamesOf(std::span<const session::DirectoryObject> selection) {
  QStringList names;
  for (const session::DirectoryObject& object : selection) names.append(FoldedName(object.dn));
  names.sort();
  return names;
}

void BringToFront(QtPropertySheet& sheet) {
  sheet.setWindowState(sheet.windowState() & ~Qt::WindowMinimized);
  sheet.raise();
  sheet.activateWindow();
}

}  // namespace

SheetWindows::~SheetWindows() {
  for (const Window& window : windows_) delete window.sheet.data();
}

QtPropertySheet* SheetWindows::Find(std::span<const session::DirectoryObject> selection) const {
  const QStringList names = NamesOf(selection);
  for (const Window& window : windows_) {
    if (window.names == names && window.sheet && window.sheet->isVisible()) return window.sheet;
  }
  return nullptr;
}

QtPropertySheet* SheetWindows::Raise(std::span<const session::DirectoryObject> selection) {
  QtPropertySheet* const open = Find(selection);
  if (open != nullptr) BringToFront(*open);
  return open;
}

void SheetWindows::Show(std::unique_ptr<QtPropertySheet> sheet,
                        std::span<const session::DirectoryObject> selection) {
  windows_.removeIf([](const Window& window) { return window.sheet.isNull(); });
  // Until it is shown whoever gave it away owns it: where memory runs out it goes before what it
  // works with.
  QtPropertySheet* const shown = sheet.get();
  windows_.append({.names = NamesOf(selection), .sheet = shown});
  const std::vector<session::DirectoryObject> objects(selection.begin(), selection.end());
  QObject::connect(shown, &QDialog::finished, shown, [this, shown, objects] {
    places_.Remember(*shown, objects);
    // Later: the sheet still stands on the stack of its own click.
    shown->deleteLater();
  });
  places_.Recall(*shown, selection);
  (void)sheet.release();
  shown->show();
  PutBeside(*shown, Open());
}

void SheetWindows::ShowModal(QtPropertySheet& sheet,
                             std::span<const session::DirectoryObject> selection) {
  places_.Recall(sheet, selection);
  RunModal(sheet);
  places_.Remember(sheet, selection);
}

QtPropertySheet* SheetWindows::SheetOf(const std::string& dn) const {
  const QString name = FoldedName(dn);
  for (const Window& window : windows_) {
    const bool is_open = window.sheet && window.sheet->isVisible();
    if (is_open && window.names.contains(name)) return window.sheet;
  }
  return nullptr;
}

QList<QtPropertySheet*> SheetWindows::Open() const {
  QList<QtPropertySheet*> open;
  for (const Window& window : windows_) {
    if (window.sheet && window.sheet->isVisible()) open.append(window.sheet);
  }
  return open;
}

bool SheetWindows::CloseAll() {
  QList<QPointer<QtPropertySheet>> open;
  for (QtPropertySheet* sheet : Open()) open.append(sheet);
  return Close(open);
}

bool SheetWindows::CloseSheetsOf(const std::vector<std::string>& dns) {
  QList<QPointer<QtPropertySheet>> concerned;
  const auto is_concerned = [&dns](const QString& name) {
    const std::string key = ldap::NameKey(ToUtf8(name));
    return std::ranges::any_of(dns, [&key](const std::string& dn) {
      const std::string top = ldap::NameKey(dn);
      return key == top || ldap::LiesBelow(key, top);
    });
  };
  for (const Window& window : windows_) {
    const bool is_open = window.sheet && window.sheet->isVisible();
    if (is_open && std::ranges::any_of(window.names, is_concerned)) concerned.append(window.sheet);
  }
  return Close(concerned);
}

bool SheetWindows::Close(const QList<QPointer<QtPropertySheet>>& sheets) {
  for (const auto& sheet : sheets) {
    if (!sheet || !sheet->HasUnsavedEdits()) continue;
    BringToFront(*sheet);
    if (!sheet->MayDiscard()) return false;
  }
  for (const auto& sheet : sheets) {
    if (!sheet) continue;
    if (!sheet->Discard()) return false;
    delete sheet.data();
  }
  return true;
}

}  // namespace pelora::console
