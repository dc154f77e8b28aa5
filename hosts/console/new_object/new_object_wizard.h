// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "hosts/console/dialogs/qt_dialog.h"
#include "hosts/console/fields/field_notes.h"
#include "hosts/console/fields/page_foot.h"
#include "hosts/console/new_object/own_page.h"
#include "hosts/console/new_object/watched_wizard_page.h"
#include "hosts/ldap/store_opener.h"
#include "hosts/resources/resource_file.h"
#include "hosts/session/model_object.h"
#include "hosts/sheets/wizard_machine.h"
#include "platform/message_box.h"

class QPlainTextEdit;
class QPushButton;
class QStackedWidget;
class QVBoxLayout;

namespace pelora::console {

class NameLabel;

/// What names of new users follow where they are made.
struct KeptPatterns {
  session::NamePatterns patterns{};
  /// Whose they are, as it is shown.
  QString company{};
  /// Keeps others. May be none: others hold for one wizard.
  std::function<void(const session::NamePatterns& patterns)> keep{};
};

/// What a wizard fills in by itself.
struct NewObjectStart {
  /// The object after which the new one is made. May be none.
  std::shared_ptr<const session::ModelObject> model{};
  KeptPatterns patterns{};
};

/// The window in which an object is made: the console's own first page (unless an extension asks
/// for the name), the extensions' pages, a summary, and Finish. What the buttons mean, and what the
/// pages are told, is the wizard machine's business; the window makes the pages and shows. While an
/// extension's page shows, the window has that page's title.
///
/// Nothing is in the directory before Finish. When the creation fails, the failure is shown,
/// nothing is left behind, and the window stays open with everything that was typed.
class QtNewObjectWizard final : public QDialog, private sheets::IPageView {
 public:
  struct Parts {
    /// Holds the pages' templates.
    const resources::ResourceFile& module;
    /// Shows a failure that no extension has shown.
    IMessageBox& message_box;
    const session::NewObjectKind& kind;
    session::OwnContext own_context;
    /// Opens the same directory for use on another thread. May be none: then nothing is looked up
    /// beside the window.
    ldap::StoreOpener open_another{};
    NewObjectStart start{};
  };

  /// What `parts` refers to outlives the window. The number of own pages in `setup` and what they
  /// stage are decided here.
  QtNewObjectWizard(const Parts& parts, sheets::NewObjectSetup setup, QWidget* parent = nullptr);
  ~QtNewObjectWizard() override;

  /// Takes an extension with its pages, before the window is started. Any other answer than `S_OK`
  /// leaves it out.
  [[nodiscard]] HRESULT AddExtension(Ref<IDsAdminNewObjExt> extension, sheets::WizardRole role);
  /// Brings up the first page, so that the window can be shown.
  void Start();

  /// Pages of all kinds, the summary (the last one) among them.
  [[nodiscard]] std::size_t PageCount() const { return machine_.pages().Count(); }
  [[nodiscard]] std::size_t CurrentPage() const { return machine_.pages().Current(); }
  [[nodiscard]] bool IsSummary() const { return machine_.IsSummary(); }
  /// The line below the pages.
  [[nodiscard]] const PageFoot& foot() const { return *foot_; }
  /// What is said there of the fields of the extensions' pages.
  [[nodiscard]] FieldNotes& notes() { return *notes_; }
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

  /// What the extensions work with, as far as it belongs to the wizard; goes after them.
  std::shared_ptr<const void> surroundings;

  /// Cancel, Escape and the close box: asks first when something has been entered.
  void reject() override;

 private:
  void MakeDialog(std::size_t place) override;
  void ShowPage(std::size_t place) override;
  void UpdateButtons() override;

  void MakeLayout(const QString& container);
  void MakeOwnPage();
  void MakeSummary();
  void MakeButtons(QVBoxLayout& layout);
  /// How the setup has to be for this window.
  [[nodiscard]] sheets::NewObjectSetup Complete(sheets::NewObjectSetup setup);
  /// Makes the widgets of the pages that an extension has added.
  void MakePages();
  void FillSummary();
  /// Shows on a page that stands for the first time what is taken over from another object.
  void TakeOverOn(std::size_t place);
  /// What is taken over beside what the pages show; nothing without another object.
  [[nodiscard]] session::ModelObject::Rest TakenOverBeside() const;
  /// Puts the address that follows from the names into the page's field, unless somebody has
  /// written another.
  void SuggestAddress(std::size_t place);
  void ChangePatterns();
  /// The extension's page that shows; null while another one does.
  [[nodiscard]] WatchedWizardPage* ShownPage() const;
  /// Whether something on an extension's page cannot be written.
  [[nodiscard]] bool IsWrong() const;
  void OnFocusMoved(const QWidget* now);
  void Next();
  /// Says in the line below the pages what is wrong, what Next waits for, or what is odd.
  void ShowNote();
  void Finish();
  /// Takes down what a page stands at when it is shown first.
  void NoteInputs(std::size_t place);
  /// Whether something has been entered that is not in the directory.
  [[nodiscard]] bool HasEntries() const;
  void ShowFailure(const sheets::CreationResult& result);

  Parts parts_;
  OwnPage* own_page_ = nullptr;
  QStackedWidget* stack_ = nullptr;
  QPlainTextEdit* summary_ = nullptr;
  NameLabel* failure_ = nullptr;
  QPushButton* back_ = nullptr;
  QPushButton* next_ = nullptr;
  QPushButton* finish_ = nullptr;
  QPushButton* cancel_ = nullptr;
  PageFoot* foot_ = nullptr;
  QString container_;
  QString title_;
  /// What was put into the field of the address last.
  std::string suggested_address_;
  /// What the pages that were shown stood at first, by their places.
  std::map<std::size_t, QString> inputs_;
  /// What stands of the extensions' pages, and what the dialogs report to; the pages' controllers
  /// hear of it when they first show. Gone before the pages.
  std::vector<std::unique_ptr<WatchedWizardPage>> watched_;
  std::vector<std::unique_ptr<QtDialog>> dialogs_;
  // Asks nothing more when the pages go.
  std::optional<FieldNotes> notes_;
  sheets::WizardMachine machine_;
};

}  // namespace pelora::console
