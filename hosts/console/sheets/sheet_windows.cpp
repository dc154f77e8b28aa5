// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/sheets/sheet_windows.h"

namespace pelora::console {

SheetWindows::~SheetWindows() {
  for (const Window& window : windows_) delete window.sheet.data();
}

bool SheetWindows::Raise(const QString& selection_key) {
  for (const Window& window : windows_) {
    if (window.key != selection_key || !window.sheet || !window.sheet->isVisible()) continue;
    window.sheet->raise();
    window.sheet->activateWindow();
    return true;
  }
  return false;
}

void SheetWindows::Show(std::unique_ptr<QtPropertySheet> sheet, const QString& selection_key) {
  windows_.removeIf([](const Window& window) { return window.sheet.isNull(); });
  QtPropertySheet* shown = sheet.release();
  windows_.append({.key = selection_key, .sheet = shown});
  // Later: the sheet still stands on the stack of its own click.
  QObject::connect(shown, &QDialog::finished, shown, &QObject::deleteLater);
  shown->show();
}

QList<QtPropertySheet*> SheetWindows::Open() const {
  QList<QtPropertySheet*> open;
  for (const Window& window : windows_) {
    if (window.sheet && window.sheet->isVisible()) open.append(window.sheet);
  }
  return open;
}

bool SheetWindows::CloseAll() {
  for (QtPropertySheet* sheet : Open()) {
    sheet->raise();
    sheet->reject();
    if (sheet->isVisible()) return false;
    delete sheet;
  }
  return true;
}

}  // namespace pelora::console
