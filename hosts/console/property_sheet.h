// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>
#include <functional>
#include <memory>
#include <vector>

#include "hosts/console/qt_dialog.h"
#include "hosts/resources/resource_file.h"
#include "platform/shell_extension.h"

class QDialogButtonBox;
class QPushButton;
class QTabWidget;

namespace pelora::console {

/// A property sheet: one tab per page, with OK, Cancel and Apply.
///
/// A page's dialog is made when its tab is first shown; a page never shown gets no notification. OK
/// asks the current page whether it may be left, lets every page that was shown apply, in order,
/// and closes the sheet when all did; the first that does not is shown and ends it. Apply does the
/// same and stays. Cancel, Escape and the close box ask before edits are lost that were not
/// applied; an apply that failed leaves them unapplied, whatever the page says of its Apply button.
///
/// Destroying the sheet closes it without a question: the dialogs that were made end first, then
/// the pages go.
class QtPropertySheet final : public QDialog {
 public:
  /// `module` holds the pages' templates and outlives the sheet.
  QtPropertySheet(const resources::ResourceFile& module, const QString& title,
                  QWidget* parent = nullptr);
  ~QtPropertySheet() override;

  /// Takes a page. False when its template cannot be read or the sheet has been started; the page
  /// has been destroyed then.
  bool AddPage(std::unique_ptr<PropSheetPage> page);
  [[nodiscard]] std::size_t PageCount() const { return pages_.size(); }
  /// Brings up the first page, so that the sheet can be shown. Needs one page at least.
  void Start();

  [[nodiscard]] std::size_t CurrentPage() const { return current_; }
  void SelectPage(std::size_t page);
  /// The dialog of a page; null while it was never shown.
  [[nodiscard]] QtDialog* Dialog(std::size_t page) const { return pages_[page].dialog.get(); }
  [[nodiscard]] QPushButton& ApplyButton() const;
  [[nodiscard]] bool HasUnsavedEdits() const;

  /// Called after every apply that wrote something, or may have: also one that failed half way.
  std::function<void()> on_applied;

  /// OK and Cancel.
  void accept() override;
  void reject() override;

 private:
  struct Page {
    std::unique_ptr<PropSheetPage> page;
    resources::DialogTemplate dialog_template;
    QWidget* holder = nullptr;
    std::unique_ptr<QtDialog> dialog;
    /// What the page last said: decides whether Apply is enabled.
    bool is_modified = false;
    /// Whether there are edits that no apply has taken.
    bool has_unsaved_edits = false;
  };

  void MakeButtons(QLayout& layout);
  void CreateDialog(std::size_t page);
  void OrderTabs();
  void Activate(std::size_t page);
  void OnTabChanged(int tab);
  void ShowTab(std::size_t page);
  void OnPageModified(std::size_t page, bool modified);
  void UpdateApplyButton();
  void Apply();
  [[nodiscard]] bool ApplyAll();
  [[nodiscard]] bool ApplyCreatedPages();
  [[nodiscard]] bool MayDiscard();
  [[nodiscard]] std::int32_t NotifyCurrent(PageNotification notification);
  void ResetPages();

  const resources::ResourceFile& module_;
  QTabWidget* tabs_ = nullptr;
  QDialogButtonBox* buttons_ = nullptr;
  std::vector<Page> pages_;
  std::size_t current_ = 0;
  bool is_started_ = false;
  /// A page is being notified: whatever arrives meanwhile must not close the sheet under it.
  bool is_busy_ = false;
  bool is_applying_ = false;
};

}  // namespace pelora::console
