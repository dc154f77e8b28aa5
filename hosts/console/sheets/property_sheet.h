// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "hosts/console/dialogs/qt_dialog.h"
#include "hosts/console/sheets/page_view.h"
#include "hosts/resources/resource_file.h"
#include "hosts/sheets/sheet_machine.h"

class QDialogButtonBox;
class QPushButton;
class QTabWidget;

namespace pelora::console {

/// A property sheet: one tab per page, with OK, Cancel and Apply. What they mean, and what the
/// pages are told, is the sheet machine's business; the window makes the pages' dialogs and shows.
///
/// The pages grow with the window. It is as large as they need, as far as the screen has room;
/// where it has not, or the window was made smaller, they are scrolled, and the buttons stay.
///
/// Cancel, Escape and the close box ask before edits are lost that were not applied; an apply that
/// failed leaves them unapplied, whatever the page says of its Apply button.
///
/// Destroying the sheet closes it without a question: the dialogs that were made end first, then
/// the pages go.
class QtPropertySheet final : public QDialog, private sheets::IPageView {
 public:
  /// `module` holds the pages' templates and outlives the sheet.
  QtPropertySheet(const resources::ResourceFile& module, const QString& title,
                  QWidget* parent = nullptr);
  ~QtPropertySheet() override;

  /// Takes a page. False when its template cannot be read or the sheet has been started; the page
  /// has been destroyed then.
  bool AddPage(std::unique_ptr<PropSheetPage> page);
  [[nodiscard]] std::size_t PageCount() const { return machine_.pages().Count(); }
  /// Brings up the first page, so that the sheet can be shown. Needs one page at least.
  void Start();

  [[nodiscard]] std::size_t CurrentPage() const { return machine_.pages().Current(); }
  void SelectPage(std::size_t page);
  /// The dialog of a page; null while it was never shown.
  [[nodiscard]] QtDialog* Dialog(std::size_t page) const { return tabs_of_[page].dialog.get(); }
  [[nodiscard]] QPushButton& ApplyButton() const;
  [[nodiscard]] bool HasUnsavedEdits() const { return machine_.HasUnsavedEdits(); }
  /// For what a host hangs on it: what is done with what a page wrote, and who is told. Which edits
  /// may be lost is asked by the sheet.
  [[nodiscard]] sheets::SheetMachine& machine() { return machine_; }

  /// Puts a widget between the pages and the buttons, which takes it over.
  void SetFoot(QWidget& foot);
  /// While held, OK and Apply are grey: something on the pages cannot be written.
  void SetHeld(bool held);
  /// Asked before OK and Apply; false: nothing is done. May be none.
  std::function<bool()> may_apply;
  /// Shows the page with the field of an attribute and puts the keyboard into it. Nothing happens
  /// where no page has such a field. May be none.
  std::function<void(std::string_view attribute)> go_to;
  /// Called before the sheet's parts go, one by one: the focus moves on between them. May be none.
  std::function<void()> on_end;

  /// OK and Cancel.
  void accept() override;
  void reject() override;

  /// Asks whether the edits that were not applied may be lost. Nothing is closed.
  [[nodiscard]] bool MayDiscard();
  /// Cancel, without a question; false when a page prevents it.
  [[nodiscard]] bool Discard();

 private:
  struct Tab {
    PageView* view = nullptr;
    std::unique_ptr<QtDialog> dialog;
  };

  void MakeDialog(std::size_t page) override;
  void ShowPage(std::size_t page) override;
  void UpdateButtons() override;

  void MakeButtons(QLayout& layout);
  [[nodiscard]] bool IsWhole() const;
  void MakeRoom();
  [[nodiscard]] bool MayApply() const { return !may_apply || may_apply(); }
  void OrderTabs();
  void OnTabChanged(int tab);

  sheets::SheetMachine machine_;
  QTabWidget* tabs_ = nullptr;
  QDialogButtonBox* buttons_ = nullptr;
  std::vector<Tab> tabs_of_;
  bool is_held_ = false;
  bool discards_ = false;
};

}  // namespace pelora::console
