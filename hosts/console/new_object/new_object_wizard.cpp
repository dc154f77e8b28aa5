// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/new_object/new_object_wizard.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <utility>

#include "directory/error_text.h"
#include "hosts/console/object_icons.h"
#include "hosts/console/qt_text.h"
#include "hosts/session/text.h"
#include "wizards/wizard_base.h"

namespace pelora::console {
namespace {

/// What a page answers that may be left.
constexpr std::int32_t kMayGo = 0;

}  // namespace

QtNewObjectWizard::QtNewObjectWizard(const Parts& parts, NewObjectSetup setup, QWidget* parent)
    : QDialog(parent), parts_(parts), container_(ToQString(setup.display_info.container_name)) {
  setObjectName(QStringLiteral("new_object_wizard"));
  setWindowTitle(QStringLiteral("New Object - %1").arg(ToQString(session::TextOf(parts_.kind))));
  setWindowIcon(IconOf(parts_.kind.icon));
  MakeLayout(container_);
  setup.own_pages = OwnPages();
  if (own_page_ != nullptr) {
    setup.write_own = [this](IADs& object) {
      // Temporary objects come from this console alone.
      return session::StageOwnValues(parts_.kind, own_page_->Values(), parts_.own_context,
                                     static_cast<ldap::NewStoreObject&>(object));
    };
  }
  session_ = std::make_unique<NewObjectSession>(std::move(setup));
  session_->on_buttons = [this](std::size_t page, bool valid) {
    if (page != current_) return;
    next_enabled_ = valid;
    UpdateButtons();
  };
}

QtNewObjectWizard::~QtNewObjectWizard() {
  for (Page& page : pages_) page.dialog.reset();
  session_.reset();
}

QtNewObjectWizard::Page* QtNewObjectWizard::ExtensionPage(std::size_t page) {
  if (page < OwnPages() || page - OwnPages() >= pages_.size()) return nullptr;
  return &pages_[page - OwnPages()];
}

std::size_t QtNewObjectWizard::PageCount() const { return OwnPages() + pages_.size() + 1; }

QtDialog* QtNewObjectWizard::Dialog(std::size_t page) const {
  if (page < OwnPages() || page - OwnPages() >= pages_.size()) return nullptr;
  const Page& shown = pages_[page - OwnPages()];
  return shown.was_shown ? shown.dialog.get() : nullptr;
}

HRESULT QtNewObjectWizard::AddExtension(Ref<IDsAdminNewObjExt> extension, WizardRole role) {
  if (is_started_) return E_UNEXPECTED;
  return session_->AddExtension(
      std::move(extension), role,
      [this](std::unique_ptr<PropSheetPage> page) { return TakePage(std::move(page)); });
}

bool QtNewObjectWizard::TakePage(std::unique_ptr<PropSheetPage> page) {
  const auto read = parts_.module.Dialog(page->Template());
  if (is_started_ || !read.value) return false;
  auto* holder = new QWidget;
  stack_->insertWidget(stack_->count() - 1, holder);
  auto dialog = std::make_unique<QtDialog>(*read.value, page->Controller(), *holder, DialogHost{});
  // The window has room for every page from the start, and its buttons stay where they are.
  holder->setMinimumSize(dialog->widget().size());
  pages_.push_back({.page = std::move(page), .dialog = std::move(dialog)});
  return true;
}

void QtNewObjectWizard::Start() {
  is_started_ = true;
  Activate(0);
  adjustSize();
}

void QtNewObjectWizard::OpenDialog(Page& page) {
  page.was_shown = true;
  page.dialog->Open();
  page.dialog->widget().show();
  QWidget* last = page.dialog->PutInTabOrder(*stack_);
  for (QPushButton* button : {back_, next_, finish_, cancel_}) {
    setTabOrder(last, button);
    last = button;
  }
}

void QtNewObjectWizard::Activate(std::size_t page) {
  const QScopedValueRollback busy(is_busy_, true);
  current_ = page;
  next_enabled_ = true;
  Page* shown = ExtensionPage(page);
  if (shown != nullptr) {
    if (!shown->was_shown) OpenDialog(*shown);
    shown->page->Controller().OnPageNotification(PageNotification::kSetActive);
  } else if (IsSummary()) {
    FillSummary();
  }
  stack_->setCurrentIndex(static_cast<int>(page));
  UpdateButtons();
  if (shown != nullptr) return shown->dialog->FocusFirst();
  IsSummary() ? finish_->setFocus() : own_page_->FirstField().setFocus();
}

void QtNewObjectWizard::UpdateButtons() {
  const bool is_own = current_ < OwnPages();
  back_->setEnabled(current_ > 0);
  next_->setVisible(!IsSummary());
  next_->setEnabled(is_own ? own_page_->WhyIncomplete().isEmpty() : next_enabled_);
  finish_->setVisible(IsSummary());
  (IsSummary() ? finish_ : next_)->setDefault(true);
}

bool QtNewObjectWizard::Leave(PageNotification way) {
  const QScopedValueRollback busy(is_busy_, true);
  Page* left = ExtensionPage(current_);
  if (left == nullptr) return true;
  IDialogController& controller = left->page->Controller();
  return controller.OnPageNotification(way) == kMayGo &&
         controller.OnPageNotification(PageNotification::kKillActive) == kMayGo;
}

void QtNewObjectWizard::GoBack() {
  if (is_busy_ || current_ == 0 || !Leave(PageNotification::kWizardBack)) return;
  Activate(current_ - 1);
}

void QtNewObjectWizard::GoNext() {
  if (is_busy_ || IsSummary() || !next_->isEnabled()) return;
  if (!Leave(PageNotification::kWizardNext)) return;
  if (current_ < OwnPages()) {
    const std::string name = session::Trimmed(own_page_->Values().name);
    if (const HRESULT status = session_->PrepareObject(name); FAILED(status)) {
      return ShowFailure({.status = status, .is_shown = false});
    }
  }
  Activate(current_ + 1);
}

void QtNewObjectWizard::Finish() {
  if (is_busy_ || !IsSummary()) return;
  failure_->hide();
  const QScopedValueRollback busy(is_busy_, true);
  const CreationResult result = session_->Commit(Dialog(OwnPages()));
  if (SUCCEEDED(result.status)) return accept();
  ShowFailure(result);
}

void QtNewObjectWizard::ShowFailure(const CreationResult& result) {
  failure_->setText(explain_failure ? explain_failure() : QString());
  failure_->setVisible(!failure_->text().isEmpty());
  if (result.is_shown) return;
  const CreationFailure failure = DescribeCreationFailure(result.status);
  parts_.message_box.Show(nullptr, MakeErrorMessage(failure.status, failure.message));
}

void QtNewObjectWizard::reject() {
  if (is_busy_) return;
  {
    const QScopedValueRollback busy(is_busy_, true);
    Page* left = ExtensionPage(current_);
    const bool may_go =
        left == nullptr || !is_started_ ||
        left->page->Controller().OnPageNotification(PageNotification::kQueryCancel) == kMayGo;
    if (!may_go) return;
  }
  QDialog::reject();
}

}  // namespace pelora::console
