// SPDX-License-Identifier: Apache-2.0
#include "hosts/sheets/new_object_session.h"

#include <algorithm>
#include <utility>

namespace pelora::sheets {

NewObjectSession::~NewObjectSession() {
  object_.Reset();
  HandObjectOut();
  for (Extension& added : extensions_) {
    added.site->Disconnect();
    added.extension.Reset();
  }
}

HRESULT NewObjectSession::AddExtension(Ref<IDsAdminNewObjExt> extension, WizardRole role,
                                       const AddPropSheetPage& take_page) {
  const std::size_t index = extensions_.size();
  auto site = Ref<WizardSite>::Adopt(new WizardSite(*this, index, role == WizardRole::kPrimary));
  extensions_.push_back({.extension = extension,
                         .site = site,
                         .role = role,
                         .first_page = PageCount(),
                         .page_count = 0});
  HRESULT status = extension->Initialize(setup_.container.Get(), nullptr, setup_.class_name,
                                         site.Get(), setup_.display_info);
  if (status == S_OK) {
    status = extension->AddPages([&](std::unique_ptr<PropSheetPage> page) {
      const bool taken = take_page(std::move(page));
      if (taken) ++extensions_[index].page_count;
      return taken;
    });
  }
  // One whose page has been taken lives by it and has to be told of what happens.
  if (status != S_OK && extensions_[index].page_count == 0) {
    site->Disconnect();
    extensions_.pop_back();
  }
  return status;
}

std::size_t NewObjectSession::PageCount() const {
  if (extensions_.empty()) return setup_.own_pages;
  return extensions_.back().first_page + extensions_.back().page_count;
}

bool NewObjectSession::HasPrimary() const {
  return std::ranges::find(extensions_, WizardRole::kPrimary, &Extension::role) !=
         extensions_.end();
}

void NewObjectSession::SetButtons(std::size_t extension, std::uint32_t page_index, bool valid) {
  if (on_buttons) on_buttons(extensions_[extension].first_page + page_index, valid);
}

void NewObjectSession::GetPageCounts(std::size_t extension, std::int32_t& total,
                                     std::int32_t& start_index) {
  total = static_cast<std::int32_t>(PageCount());
  start_index = static_cast<std::int32_t>(extensions_[extension].first_page);
}

HRESULT NewObjectSession::CreateNew(const std::string& name) { return MakeObject(name); }

HRESULT NewObjectSession::PrepareObject(const std::string& name) {
  return object_ && name == name_ ? S_OK : MakeObject(name);
}

HRESULT NewObjectSession::MakeObject(const std::string& name) {
  name_ = name;
  made_ = setup_.make_object(name, object_);
  HandObjectOut();
  return made_;
}

void NewObjectSession::HandObjectOut() {
  // Whatever an extension answers, it has been told.
  for (const Extension& added : extensions_) (void)added.extension->SetObject(object_.Get());
}

std::vector<std::string> NewObjectSession::Summaries() const {
  std::vector<std::string> summaries;
  for (const Extension& added : extensions_) {
    std::string text;
    if (SUCCEEDED(added.extension->GetSummaryInfo(text))) summaries.push_back(std::move(text));
  }
  return summaries;
}

HRESULT NewObjectSession::WritePhase(IDialog* owner, NewObjectPhase phase) {
  HRESULT first_failure = S_OK;
  for (const Extension& added : extensions_) {
    const HRESULT status = added.extension->WriteData(owner, phase);
    if (FAILED(status) && SUCCEEDED(first_failure)) first_failure = status;
  }
  return first_failure;
}

HRESULT NewObjectSession::WriteBeforeCommit(IDialog* owner) {
  if (!HasPrimary()) {
    // It is gone when it could not be made anew after an earlier failure.
    HRESULT status = object_ ? S_OK : MakeObject(std::string(name_));
    if (SUCCEEDED(status) && setup_.write_own) status = setup_.write_own(*object_);
    if (FAILED(status)) return status;
  }
  // A primary extension comes first, and makes the object that the others then write into.
  if (const HRESULT status = WritePhase(owner, NewObjectPhase::kPreCommit); FAILED(status)) {
    return status;
  }
  if (object_) return S_OK;
  return FAILED(made_) ? made_ : E_UNEXPECTED;
}

CreationResult NewObjectSession::Commit(IDialog* owner) {
  if (const HRESULT status = WriteBeforeCommit(owner); FAILED(status)) {
    return Fail(owner, status, NewObjectPhase::kPreCommit);
  }
  if (const HRESULT status = object_->SetInfo(); FAILED(status)) {
    return Fail(owner, status, NewObjectPhase::kCommit);
  }
  const HRESULT after = WritePhase(owner, NewObjectPhase::kPostCommit);
  if (FAILED(after))
    (void)extensions_.front().extension->OnError(owner, after, NewObjectPhase::kPostCommit);
  return {};
}

void NewObjectSession::StartAnew(IDialog* owner) {
  // What had been staged goes with the object; the next commit writes everything again.
  if (object_) (void)MakeObject(std::string(name_));
  (void)WritePhase(owner, NewObjectPhase::kCleanup);
}

CreationResult NewObjectSession::Fail(IDialog* owner, HRESULT status, NewObjectPhase phase) {
  StartAnew(owner);
  if (extensions_.empty()) return {.status = status, .is_shown = false};
  const HRESULT shown = extensions_.front().extension->OnError(owner, status, phase);
  return {.status = status, .is_shown = SUCCEEDED(shown)};
}

}  // namespace pelora::sheets
