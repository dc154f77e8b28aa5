// SPDX-License-Identifier: Apache-2.0
#include "hosts/sheets/wizard_machine.h"

#include <utility>

#include "hosts/sheets/scoped_flag.h"

namespace pelora::sheets {

WizardMachine::WizardMachine(const resources::ResourceFile& templates, IPageView& view,
                             NewObjectSetup setup)
    : view_(view),
      own_pages_(setup.own_pages),
      // The summary stands behind the extensions' pages.
      pages_(templates, view, {.in_front = setup.own_pages, .behind = 1}),
      session_(std::make_unique<NewObjectSession>(std::move(setup))) {
  // Nothing is said of a page's buttons before it has shown.
  pages_.on_current = [this] { next_enabled_ = true; };
  session_->on_buttons = [this](std::size_t page, bool valid) {
    if (page != pages_.Current()) return;
    next_enabled_ = valid;
    view_.UpdateButtons();
  };
}

HRESULT WizardMachine::AddExtension(Ref<IDsAdminNewObjExt> extension, WizardRole role) {
  if (state_ != State::kFilling) return E_UNEXPECTED;
  return session_->AddExtension(std::move(extension), role,
                                [this](std::unique_ptr<PropSheetPage> page) {
                                  return state_ == State::kFilling && pages_.Add(std::move(page));
                                });
}

void WizardMachine::Show() {
  if (state_ != State::kFilling) return;
  state_ = State::kOpen;
  Activate(0, Direction::kForward);
}

void WizardMachine::Close() {
  state_ = State::kClosed;
  session_.reset();
  pages_.Clear();
}

void WizardMachine::Activate(std::size_t page, Direction direction) {
  const ScopedFlag busy(is_busy_);
  pages_.Activate(page, direction);
  view_.UpdateButtons();
}

bool WizardMachine::IsNextEnabled() const {
  if (!IsOpen() || IsSummary()) return false;
  return IsOwnPage() ? own_page_complete_ : next_enabled_;
}

void WizardMachine::SetOwnPageComplete(bool complete) {
  own_page_complete_ = complete;
  view_.UpdateButtons();
}

std::optional<std::size_t> WizardMachine::Leave(PageNotification way, std::size_t neighbour) {
  const ScopedFlag busy(is_busy_);
  const std::size_t left = pages_.Current();
  const std::int32_t answer = pages_.Tell(left, way);
  if (answer == kPageDeclines) return std::nullopt;
  std::optional<std::size_t> target = neighbour;
  if (answer != kPageMayGo) target = pages_.Find(static_cast<DialogId>(answer));
  if (!target || pages_.Tell(left, PageNotification::kKillActive) != kPageMayGo) {
    return std::nullopt;
  }
  return target;
}

bool WizardMachine::PrepareObject() {
  const ScopedFlag busy(is_busy_);
  const HRESULT status = session_->PrepareObject(own_name ? own_name() : std::string());
  if (FAILED(status)) Fail({.status = status, .is_shown = false});
  return SUCCEEDED(status);
}

void WizardMachine::Fail(const CreationResult& failure) const {
  if (on_failure) on_failure(failure);
}

bool WizardMachine::Next() {
  if (!IsIdle() || !IsNextEnabled()) return false;
  const auto target = Leave(PageNotification::kWizardNext, pages_.Current() + 1);
  if (!target || (IsOwnPage() && !PrepareObject())) return false;
  Activate(*target, Direction::kForward);
  return true;
}

bool WizardMachine::Back() {
  if (!IsIdle() || !IsBackEnabled()) return false;
  const auto target = Leave(PageNotification::kWizardBack, pages_.Current() - 1);
  if (!target) return false;
  Activate(*target, Direction::kBack);
  return true;
}

bool WizardMachine::Finish(IDialog* owner) {
  if (!IsIdle() || !IsSummary()) return false;
  const ScopedFlag busy(is_busy_);
  result_ = session_->Commit(owner);
  if (FAILED(result_->status)) {
    Fail(*result_);
    return false;
  }
  state_ = State::kClosed;
  return true;
}

bool WizardMachine::Cancel() {
  if (!IsIdle()) return false;
  const ScopedFlag busy(is_busy_);
  const auto answer = pages_.Tell(pages_.Current(), PageNotification::kQueryCancel);
  if (answer != kPageMayGo) return false;
  pages_.TellShown(PageNotification::kReset);
  state_ = State::kClosed;
  return true;
}

}  // namespace pelora::sheets
