// SPDX-License-Identifier: Apache-2.0
#include "hosts/headless/headless_new_object_wizard.h"

#include <utility>

namespace pelora {
namespace {

constexpr std::int32_t kMayGo = 0;

}  // namespace

HeadlessNewObjectWizard::HeadlessNewObjectWizard(const resources::ResourceFile& templates,
                                                 NewObjectSetup setup, WizardRole first_extension)
    : templates_(templates),
      first_extension_(first_extension),
      own_pages_(first_extension == WizardRole::kPrimary ? 0 : 1) {
  setup.own_pages = own_pages_;
  session_ = std::make_unique<NewObjectSession>(std::move(setup));
  session_->on_buttons = [this](std::size_t page, bool valid) {
    if (page == current_) next_enabled_ = valid;
  };
}

HRESULT HeadlessNewObjectWizard::AddExtension(Ref<IDsAdminNewObjExt> extension) {
  if (was_shown_) return E_UNEXPECTED;
  const WizardRole role = std::exchange(first_extension_, WizardRole::kSecondary);
  return session_->AddExtension(
      std::move(extension), role,
      [this](std::unique_ptr<PropSheetPage> page) { return TakePage(std::move(page)); });
}

bool HeadlessNewObjectWizard::TakePage(std::unique_ptr<PropSheetPage> page) {
  auto described = templates_.Dialog(page->Template());
  if (was_shown_ || !described.value) return false;
  pages_.push_back({std::move(page), std::move(*described.value), nullptr});
  return true;
}

HeadlessNewObjectWizard::Page* HeadlessNewObjectWizard::ExtensionPage(std::size_t page) {
  return page >= OwnPages() && page - OwnPages() < pages_.size() ? &pages_[page - OwnPages()]
                                                                 : nullptr;
}

std::string HeadlessNewObjectWizard::Title(std::size_t page) {
  const Page* shown = ExtensionPage(page);
  return shown != nullptr ? shown->page->Title() : std::string();
}

HeadlessDialog* HeadlessNewObjectWizard::Dialog(std::size_t page) {
  Page* shown = ExtensionPage(page);
  return shown != nullptr ? shown->dialog.get() : nullptr;
}

IDialog* HeadlessNewObjectWizard::Owner() { return Dialog(OwnPages()); }

void HeadlessNewObjectWizard::Show() {
  if (was_shown_) return;
  was_shown_ = true;
  open_ = true;
  Activate(0);
}

void HeadlessNewObjectWizard::Activate(std::size_t page) {
  current_ = page;
  Page* shown = ExtensionPage(page);
  if (shown == nullptr) {
    next_enabled_ = !IsSummary() && !name_.empty();
    if (IsSummary()) summaries_ = session_->Summaries();
    return;
  }
  if (!shown->dialog) {
    shown->dialog = std::make_unique<HeadlessDialog>(shown->described, shown->page->Controller());
    shown->dialog->Open();
  }
  shown->page->Controller().OnPageNotification(PageNotification::kSetActive);
}

void HeadlessNewObjectWizard::TypeName(const std::string& name) {
  name_ = name;
  if (open_ && current_ < OwnPages()) next_enabled_ = !name_.empty();
}

bool HeadlessNewObjectWizard::Leave(PageNotification way) {
  Page* left = ExtensionPage(current_);
  if (left == nullptr) return true;
  IDialogController& controller = left->page->Controller();
  return controller.OnPageNotification(way) == kMayGo &&
         controller.OnPageNotification(PageNotification::kKillActive) == kMayGo;
}

bool HeadlessNewObjectWizard::Next() {
  if (!IsNextEnabled() || !Leave(PageNotification::kWizardNext)) return false;
  if (current_ < OwnPages() && FAILED(session_->PrepareObject(name_))) return false;
  Activate(current_ + 1);
  return true;
}

bool HeadlessNewObjectWizard::Back() {
  if (!open_ || current_ == 0 || !Leave(PageNotification::kWizardBack)) return false;
  Activate(current_ - 1);
  return true;
}

bool HeadlessNewObjectWizard::Finish() {
  if (!open_ || !IsSummary()) return false;
  result_ = session_->Commit(Owner());
  if (FAILED(result_->status)) return false;
  Close();
  return true;
}

bool HeadlessNewObjectWizard::Cancel() {
  if (!open_) return false;
  Page* left = ExtensionPage(current_);
  if (left != nullptr &&
      left->page->Controller().OnPageNotification(PageNotification::kQueryCancel) != kMayGo) {
    return false;
  }
  Close();
  return true;
}

void HeadlessNewObjectWizard::Close() {
  open_ = false;
  was_shown_ = true;
  for (Page& page : pages_) page.dialog.reset();
  session_.reset();
  pages_.clear();
}

}  // namespace pelora
