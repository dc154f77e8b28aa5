// SPDX-License-Identifier: Apache-2.0
#include "hosts/sheets/sheet_machine.h"

#include <algorithm>
#include <utility>

#include "hosts/sheets/scoped_flag.h"

namespace pelora::sheets {

bool SheetMachine::AddPage(std::unique_ptr<PropSheetPage> page) {
  if (state_ != State::kFilling || !pages_.Add(std::move(page))) return false;
  marks_.emplace_back();
  return true;
}

void SheetMachine::Show() {
  if (state_ != State::kFilling || pages_.Count() == 0) return;
  state_ = State::kOpen;
  Activate(0);
}

void SheetMachine::Close() {
  state_ = State::kClosed;
  pages_.Clear();
  marks_.clear();
}

void SheetMachine::Activate(std::size_t page) {
  const ScopedFlag busy(is_busy_);
  pages_.Activate(page, Direction::kForward);
}

bool SheetMachine::SelectPage(std::size_t page) {
  if (!IsIdle() || page >= pages_.Count()) return false;
  if (page == pages_.Current()) return true;
  {
    const ScopedFlag busy(is_busy_);
    const auto answer = pages_.Tell(pages_.Current(), PageNotification::kKillActive);
    if (answer != kPageMayGo) return false;
  }
  Activate(page);
  return true;
}

void SheetMachine::SetModified(std::size_t page, bool modified) {
  if (page >= marks_.size()) return;
  marks_[page].is_modified = modified;
  if (modified || !is_applying_) marks_[page].has_unsaved_edits = modified;
  view_.UpdateButtons();
}

bool SheetMachine::IsApplyEnabled() const {
  return IsOpen() && std::ranges::any_of(marks_, &Marks::is_modified);
}

bool SheetMachine::HasUnsavedEdits() const {
  return std::ranges::any_of(marks_, &Marks::has_unsaved_edits);
}

bool SheetMachine::ApplyAll() {
  const ScopedFlag busy(is_busy_);
  const auto answer = pages_.Tell(pages_.Current(), PageNotification::kKillActive);
  if (answer != kPageMayGo) return false;
  const bool applied = ApplyShownPages();
  view_.UpdateButtons();
  if (on_applied) on_applied();
  return applied;
}

bool SheetMachine::ApplyShownPages() {
  const ScopedFlag applying(is_applying_);
  try {
    return ApplyAndCommit();
  } catch (...) {
    // Nobody knows how far it came: what was to be written can be written once more.
    TakeUpUnsavedEdits(marks_.size());
    view_.UpdateButtons();
    throw;
  }
}

bool SheetMachine::ApplyAndCommit() {
  for (std::size_t page = 0; page < pages_.Count(); ++page) {
    if (!pages_.WasShown(page) || ApplyPage(page)) continue;
    // It took its own mark back or left it; those before it are to be applied again.
    if (commit) TakeUpUnsavedEdits(page);
    return false;
  }
  return !commit || CommitAll();
}

bool SheetMachine::ApplyPage(std::size_t page) {
  const std::int32_t answer = pages_.Tell(page, PageNotification::kApply);
  if (answer == kPageApplied) {
    if (!commit) marks_[page].has_unsaved_edits = false;
    return true;
  }
  if (answer == kPageInvalidShow) pages_.Show(page);
  return false;
}

bool SheetMachine::CommitAll() {
  const std::optional<std::size_t> left = commit();
  if (!left) {
    for (Marks& marks : marks_) marks.has_unsaved_edits = false;
    return true;
  }
  TakeUpUnsavedEdits(marks_.size());
  SetModified(*left, true);
  pages_.Show(*left);
  return false;
}

void SheetMachine::TakeUpUnsavedEdits(std::size_t end) {
  for (std::size_t page = 0; page < end; ++page) {
    if (marks_[page].has_unsaved_edits) marks_[page].is_modified = true;
  }
}

bool SheetMachine::Apply() {
  if (!IsIdle() || !IsApplyEnabled() || !ApplyAll()) return false;
  for (Marks& marks : marks_) marks.is_modified = false;
  view_.UpdateButtons();
  const ScopedFlag busy(is_busy_);
  (void)pages_.Tell(pages_.Current(), PageNotification::kSetActive);
  return true;
}

bool SheetMachine::Ok() {
  if (!IsIdle() || !ApplyAll()) return false;
  state_ = State::kClosed;
  return true;
}

bool SheetMachine::Cancel() {
  if (!IsIdle()) return false;
  const ScopedFlag busy(is_busy_);
  const auto answer = pages_.Tell(pages_.Current(), PageNotification::kQueryCancel);
  if (answer != kPageMayGo) return false;
  if (HasUnsavedEdits() && may_discard && !may_discard()) return false;
  pages_.TellShown(PageNotification::kReset);
  state_ = State::kClosed;
  return true;
}

}  // namespace pelora::sheets
