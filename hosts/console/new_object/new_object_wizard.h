// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>
#include <functional>
#include <memory>
#include <vector>

#include "hosts/console/new_object/own_page.h"
#include "hosts/console/qt_dialog.h"
#include "hosts/new_object/new_object_session.h"
#include "hosts/resources/resource_file.h"
#include "platform/message_box.h"

class QLabel;
class QPlainTextEdit;
class QPushButton;
class QStackedWidget;
class QVBoxLayout;

namespace pelora::console {

/// The window in which an object is made: the console's own first page (unless an extension asks
/// for the name), the extensions' pages, a summary, and Finish.
///
/// Nothing is in the directory before Finish. When the creation fails, the failure is shown,
/// nothing is left behind, and the window stays open with everything that was typed.
class QtNewObjectWizard final : public QDialog {
 public:
  struct Parts {
    /// Holds the pages' templates.
    const resources::ResourceFile& module;
    /// Shows a failure that no extension has shown.
    IMessageBox& message_box;
    const session::NewObjectKind& kind;
    session::OwnContext own_context;
  };

  /// What `parts` refers to outlives the window. The number of own pages in `setup` and what they
  /// stage are decided here.
  QtNewObjectWizard(const Parts& parts, NewObjectSetup setup, QWidget* parent = nullptr);
  ~QtNewObjectWizard() override;

  /// Takes an extension with its pages, before the window is started. Any other answer than `S_OK`
  /// leaves it out.
  [[nodiscard]] HRESULT AddExtension(Ref<IDsAdminNewObjExt> extension, WizardRole role);
  /// Brings up the first page, so that the window can be shown.
  void Start();

  /// Pages of all kinds, the summary (the last one) among them.
  [[nodiscard]] std::size_t PageCount() const;
  [[nodiscard]] std::size_t CurrentPage() const { return current_; }
  [[nodiscard]] bool IsSummary() const { return current_ + 1 == PageCount(); }
  /// Null for a kind that has none.
  [[nodiscard]] OwnPage* own_page() const { return own_page_; }
  /// The dialog of an extension's page; null while it was never shown, and for other pages.
  [[nodiscard]] QtDialog* Dialog(std::size_t page) const;
  [[nodiscard]] QPushButton& back() const { return *back_; }
  [[nodiscard]] QPushButton& next() const { return *next_; }
  [[nodiscard]] QPushButton& finish() const { return *finish_; }

  /// What is to be said of the last failure beside its code; may be none.
  std::function<QString()> explain_failure;
  /// Distinguished name of the object that was made, once the window was accepted. Asks the
  /// directory.
  std::function<std::string()> created_name;

  /// Cancel, Escape and the close box.
  void reject() override;

 private:
  struct Page {
    std::unique_ptr<PropSheetPage> page;
    /// Its widgets stand from the beginning, its controller hears of it when it is first shown.
    std::unique_ptr<QtDialog> dialog;
    bool was_shown = false;
  };

  void MakeLayout(const QString& container);
  void MakeOwnPage();
  void MakeSummary();
  void MakeButtons(QVBoxLayout& layout);
  [[nodiscard]] std::size_t OwnPages() const { return own_page_ != nullptr ? 1 : 0; }
  /// Null for a page of the console's own.
  [[nodiscard]] Page* ExtensionPage(std::size_t page);
  bool TakePage(std::unique_ptr<PropSheetPage> page);
  void OpenDialog(Page& page);
  void Activate(std::size_t page);
  void UpdateButtons();
  void FillSummary();
  /// Whether the current page may be left in this way.
  [[nodiscard]] bool Leave(PageNotification way);
  void GoBack();
  void GoNext();
  void Finish();
  void ShowFailure(const CreationResult& result);

  Parts parts_;
  std::vector<Page> pages_;
  /// Holds on to the extensions, which the pages keep: it ends before them.
  std::unique_ptr<NewObjectSession> session_;
  OwnPage* own_page_ = nullptr;
  QStackedWidget* stack_ = nullptr;
  QWidget* summary_page_ = nullptr;
  QPlainTextEdit* summary_ = nullptr;
  QLabel* failure_ = nullptr;
  QPushButton* back_ = nullptr;
  QPushButton* next_ = nullptr;
  QPushButton* finish_ = nullptr;
  QPushButton* cancel_ = nullptr;
  QString container_;
  std::size_t current_ = 0;
  bool next_enabled_ = false;
  bool is_started_ = false;
  /// A page is being notified: whatever arrives meanwhile must not close the window under it.
  bool is_busy_ = false;
};

}  // namespace pelora::console
