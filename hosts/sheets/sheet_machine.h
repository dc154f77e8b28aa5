// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "hosts/sheets/sheet_pages.h"

namespace pelora::sheets {

/// What a property sheet is, apart from what is to be seen of it: its pages and their order, the
/// page that shows, what each page is told and when, whom it may refuse, what OK, Apply and Cancel
/// mean, and which pages have changes.
///
/// A page's dialog is made when the page first shows; a page never shown is told nothing. A page
/// that is being told something is not to be disturbed: whatever is asked of the sheet meanwhile is
/// refused.
///
/// The faces drive it by the functions that stand for what a person does; each answers whether it
/// was done. After `Ok` and `Cancel` have answered true the sheet is closed: its face takes its
/// dialogs down and then ends the pages by `Close`.
class SheetMachine {
 public:
  /// `templates` holds the pages' templates; both outlive the machine.
  SheetMachine(const resources::ResourceFile& templates, IPageView& view)
      : view_(view), pages_(templates, view, {}) {}
  SheetMachine(const SheetMachine&) = delete;
  SheetMachine& operator=(const SheetMachine&) = delete;
  /// The pages go before what the host hung on the sheet.
  ~SheetMachine() { Close(); }

  /// Takes a page before the sheet is shown, or refuses (and destroys) it: when its template cannot
  /// be read, and when the sheet has been shown.
  bool AddPage(std::unique_ptr<PropSheetPage> page);
  /// Brings up the first page. A sheet without pages stays closed.
  void Show();
  [[nodiscard]] bool IsOpen() const { return state_ == State::kOpen; }
  /// Destroys the pages, which are told nothing any more.
  void Close();

  /// Titles, templates and controllers of the pages, and which of them was shown and which shows.
  [[nodiscard]] const SheetPages& pages() const { return pages_; }

  /// The tab of a page is clicked: the page that shows may refuse to be left. The page that shows
  /// then may be another: see `SheetPages::Activate`.
  bool SelectPage(std::size_t page);
  /// A page says whether it has changes to apply.
  void SetModified(std::size_t page, bool modified);
  /// Whether Apply can be clicked: some page has changes.
  [[nodiscard]] bool IsApplyEnabled() const;
  /// Whether there are edits that no apply has taken. A page takes its mark back before it writes;
  /// when the writing fails the edits are as unsaved as before.
  [[nodiscard]] bool HasUnsavedEdits() const;

  /// The page that shows is asked whether it may be left; then every page that was shown applies,
  /// in order. The first that does not ends the round: it is shown if it wants to be. The pages
  /// before it have applied theirs or, where there is a `commit`, have it before them still. After
  /// a round without failure no page has changes, and the page that shows is told that it is active
  /// again.
  bool Apply();
  /// Applies, changed or not, and closes the sheet when every page has applied.
  bool Ok();
  /// Closes the sheet and tells every page that was shown; the page that shows may prevent it.
  bool Cancel();

  /// Asked once in a round, when every page that was shown has applied: brings what the pages wrote
  /// to where it belongs. A page, where not everything could be: it is shown, it and the others
  /// with edits count as not applied, and the round has failed. May be none: the pages have written
  /// themselves.
  std::function<std::optional<std::size_t>()> commit;
  /// Asked before Cancel loses unsaved edits; false: the sheet stays. May be none: nobody minds.
  std::function<bool()> may_discard;
  /// Told after every round that wrote something, or may have: also one that failed half way. May
  /// be none.
  std::function<void()> on_applied;

 private:
  enum class State : std::uint8_t { kFilling, kOpen, kClosed };

  struct Marks {
    /// What the page last said: decides whether Apply is enabled.
    bool is_modified = false;
    bool has_unsaved_edits = false;
  };

  /// Whether the sheet can be used now.
  [[nodiscard]] bool IsIdle() const { return IsOpen() && !is_busy_; }
  void Activate(std::size_t page);
  [[nodiscard]] bool ApplyAll();
  [[nodiscard]] bool ApplyShownPages();
  [[nodiscard]] bool ApplyAndCommit();
  [[nodiscard]] bool ApplyPage(std::size_t page);
  /// Whether what the pages wrote is where it belongs.
  [[nodiscard]] bool CommitAll();
  /// Edits that the pages before `end` have given away and that have not come through are changes
  /// again.
  void TakeUpUnsavedEdits(std::size_t end);

  IPageView& view_;
  SheetPages pages_;
  std::vector<Marks> marks_;
  State state_ = State::kFilling;
  /// A page is being told something.
  bool is_busy_ = false;
  bool is_applying_ = false;
};

}  // namespace pelora::sheets
