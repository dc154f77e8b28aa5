// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QPointer>
#include <QStringList>
#include <span>
#include <string>
#include <vector>

#include "hosts/console/sheets/property_sheet.h"
#include "hosts/console/sheets/sheet_places.h"
#include "hosts/session/directory_browser.h"

namespace pelora::console {

/// The property sheets that stand open, each for a selection of its own. They are not modal:
/// several may stand side by side, and the window behind them can be used.
///
/// Two sheets may have objects in common. Neither overwrites what the other has written: a change
/// is sent with what its sheet has seen, and what differs by then is asked about.
class SheetWindows {
 public:
  SheetWindows() = default;
  /// Closes what is still open, without a question.
  ~SheetWindows();
  SheetWindows(const SheetWindows&) = delete;
  SheetWindows& operator=(const SheetWindows&) = delete;

  /// Brings the sheet of these objects to the front, in whatever order they are named; null when
  /// there is none.
  QtPropertySheet* Raise(std::span<const session::DirectoryObject> selection);
  /// Shows the sheet of a selection, which goes when it is closed. It lies where the last of its
  /// kind did, and not exactly on another one.
  void Show(std::unique_ptr<QtPropertySheet> sheet,
            std::span<const session::DirectoryObject> selection);
  /// Shows a sheet over a modal window, which waits until it is closed.
  void ShowModal(QtPropertySheet& sheet, std::span<const session::DirectoryObject> selection);
  /// A sheet in which an object's settings stand open; null when there is none.
  [[nodiscard]] QtPropertySheet* SheetOf(const std::string& dn) const;
  /// Closes every sheet. Before the first is closed, each that holds edits asks whether they may be
  /// lost; false when one is kept, and then all of them stay as they are.
  [[nodiscard]] bool CloseAll();
  /// The same for the sheets of these objects, and of what lies below them: their names are about
  /// to be no longer theirs.
  [[nodiscard]] bool CloseSheetsOf(const std::vector<std::string>& dns);
  [[nodiscard]] QList<QtPropertySheet*> Open() const;

 private:
  struct Window {
    /// The objects' names, folded and in order.
    QStringList names;
    QPointer<QtPropertySheet> sheet;
  };

  [[nodiscard]] static bool Close(const QList<QPointer<QtPropertySheet>>& sheets);

  QList<Window> windows_;
  SheetPlaces places_;
};

}  // namespace pelora::console
