// SPDX-License-Identifier: Apache-2.0
#include "hosts/headless/headless_property_sheet.h"

#include <algorithm>
#include <utility>

namespace pelora {
namespace {

/// Answer to `kApply` on which the sheet shows the page that gave it.
constexpr std::int32_t kPageInvalidShow = 1;

}  // namespace

bool HeadlessPropertySheet::AddPage(std::unique_ptr<PropSheetPage> page) {
  auto described = templates_.Dialog(page->Template());
  if (was_shown_ || !described.value) return false;
  pages_.push_back({std::move(page), std::move(*described.value), nullptr});
  return true;
}

AddPropSheetPage HeadlessPropertySheet::PageTaker() {
  return [this](std::unique_ptr<PropSheetPage> page) { return AddPage(std::move(page)); };
}

void HeadlessPropertySheet::Show() {
  if (was_shown_ || pages_.empty()) return;
  was_shown_ = true;
  open_ = true;
  Activate(0);
}

std::string HeadlessPropertySheet::Title(std::size_t page) const {
  if (page >= pages_.size()) return {};
  const std::string title = pages_[page].page->Title();
  return title.empty() ? pages_[page].described.title : title;
}

HeadlessDialog* HeadlessPropertySheet::Dialog(std::size_t page) {
  return page < pages_.size() ? pages_[page].dialog.get() : nullptr;
}

std::int32_t HeadlessPropertySheet::Tell(Page& page, PageNotification notification) {
  return page.page->Controller().OnPageNotification(notification);
}

void HeadlessPropertySheet::Activate(std::size_t page) {
  current_ = page;
  Page& shown = pages_[page];
  if (!shown.dialog) {
    shown.dialog = std::make_unique<HeadlessDialog>(shown.described, shown.page->Controller());
    shown.dialog->Open();
  }
  Tell(shown, PageNotification::kSetActive);
}

bool HeadlessPropertySheet::SelectPage(std::size_t page) {
  if (!open_ || page >= pages_.size()) return false;
  if (page == current_) return true;
  if (Tell(pages_[current_], PageNotification::kKillActive) != 0) return false;
  Activate(page);
  return true;
}

bool HeadlessPropertySheet::IsApplyEnabled() const {
  return open_ && std::ranges::any_of(pages_, [](const Page& page) {
           return page.dialog && page.dialog->PageModified().value_or(false);
         });
}

bool HeadlessPropertySheet::ApplyPages() {
  if (Tell(pages_[current_], PageNotification::kKillActive) != 0) return false;
  for (std::size_t index = 0; index < pages_.size(); ++index) {
    if (!pages_[index].dialog) continue;
    const std::int32_t answer = Tell(pages_[index], PageNotification::kApply);
    if (answer == kPageApplied) continue;
    if (answer == kPageInvalidShow) Activate(index);
    return false;
  }
  return true;
}

bool HeadlessPropertySheet::Apply() {
  if (!IsApplyEnabled() || !ApplyPages()) return false;
  for (const Page& page : pages_) {
    if (page.dialog) page.dialog->SetPageModified(false);
  }
  Tell(pages_[current_], PageNotification::kSetActive);
  return true;
}

bool HeadlessPropertySheet::Ok() {
  if (!open_ || !ApplyPages()) return false;
  Close();
  return true;
}

bool HeadlessPropertySheet::Cancel() {
  if (!open_ || Tell(pages_[current_], PageNotification::kQueryCancel) != 0) return false;
  for (Page& page : pages_) {
    if (page.dialog) Tell(page, PageNotification::kReset);
  }
  Close();
  return true;
}

void HeadlessPropertySheet::Close() {
  open_ = false;
  for (Page& page : pages_) page.dialog.reset();
  pages_.clear();
  current_ = 0;
}

}  // namespace pelora
