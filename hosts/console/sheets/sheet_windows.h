// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QPointer>

#include "hosts/console/sheets/property_sheet.h"

namespace pelora::console {

/// The property sheets that stand open, each for a selection of its own. They are not modal:
/// several may stand side by side.
class SheetWindows {
 public:
  SheetWindows() = default;
  /// Closes what is still open, without a question.
  ~SheetWindows();
  SheetWindows(const SheetWindows&) = delete;
  SheetWindows& operator=(const SheetWindows&) = delete;

  /// Brings the sheet of this selection to the front, if there is one.
  bool Raise(const QString& selection_key);
  /// Shows a sheet, which goes when it is closed.
  void Show(std::unique_ptr<QtPropertySheet> sheet, const QString& selection_key);
  /// Cancels every sheet, asking about unsaved edits. False when one stays, which ends it.
  [[nodiscard]] bool CloseAll();
  [[nodiscard]] QList<QtPropertySheet*> Open() const;

 private:
  struct Window {
    QString key;
    QPointer<QtPropertySheet> sheet;
  };

  QList<Window> windows_;
};

}  // namespace pelora::console
