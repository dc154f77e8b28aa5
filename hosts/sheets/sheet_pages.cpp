// SPDX-License-Identifier: Apache-2.0
#include "hosts/sheets/sheet_pages.h"

#include <algorithm>
#include <utility>

namespace pelora::sheets {

bool SheetPages::Add(std::unique_ptr<PropSheetPage> page) {
  const resources::DialogTemplate* const described = templates_.FindDialog(page->Template());
  if (described == nullptr) return false;
  pages_.push_back({std::move(page), described, false});
  return true;
}

std::size_t SheetPages::Count() const { return own_.in_front + pages_.size() + own_.behind; }

const SheetPages::Page* SheetPages::At(std::size_t place) const {
  const bool is_page = place >= own_.in_front && place - own_.in_front < pages_.size();
  return is_page ? &pages_[place - own_.in_front] : nullptr;
}

std::string SheetPages::Title(std::size_t place) const {
  const Page* page = At(place);
  if (page == nullptr) return {};
  std::string title = page->page->Title();
  return title.empty() ? page->described->title : title;
}

const resources::DialogTemplate& SheetPages::Template(std::size_t place) const {
  return *At(place)->described;
}

IDialogController& SheetPages::Controller(std::size_t place) const {
  return At(place)->page->Controller();
}

bool SheetPages::WasShown(std::size_t place) const {
  const Page* page = At(place);
  return page != nullptr && page->was_shown;
}

std::int32_t SheetPages::Tell(std::size_t place, PageNotification notification) const {
  const Page* page = At(place);
  return page != nullptr ? page->page->Controller().OnPageNotification(notification) : kPageMayGo;
}

void SheetPages::TellShown(PageNotification notification) const {
  for (std::size_t place = 0; place < Count(); ++place) {
    if (WasShown(place)) (void)Tell(place, notification);
  }
}

std::optional<std::size_t> SheetPages::Find(DialogId dialog) const {
  const auto found =
      std::ranges::find(pages_, dialog, [](const Page& page) { return page.page->Template(); });
  if (found == pages_.end()) return std::nullopt;
  return own_.in_front + static_cast<std::size_t>(found - pages_.begin());
}

void SheetPages::Show(std::size_t place) {
  current_ = place;
  view_.ShowPage(place);
}

std::int32_t SheetPages::Enter(std::size_t place) {
  current_ = place;
  if (on_current) on_current();
  if (IsPage(place) && !WasShown(place)) {
    pages_[place - own_.in_front].was_shown = true;
    view_.MakeDialog(place);
  }
  return Tell(place, PageNotification::kSetActive);
}

std::optional<std::size_t> SheetPages::After(std::int32_t answer, Direction direction) const {
  if (answer == kPageMayGo) return std::nullopt;
  if (answer != kPageDeclines) return Find(static_cast<DialogId>(answer));
  const bool is_at_end = direction == Direction::kBack ? current_ == 0 : current_ + 1 == Count();
  if (is_at_end) return std::nullopt;
  return direction == Direction::kBack ? current_ - 1 : current_ + 1;
}

void SheetPages::Activate(std::size_t place, Direction direction) {
  std::optional<std::size_t> next = place;
  // Two pages that name each other would never come to an end.
  for (std::size_t asked = 0; next && asked <= Count(); ++asked) {
    next = After(Enter(*next), direction);
  }
  view_.ShowPage(current_);
}

}  // namespace pelora::sheets
