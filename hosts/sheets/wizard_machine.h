// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "hosts/sheets/new_object_session.h"
#include "hosts/sheets/sheet_pages.h"

namespace pelora::sheets {

/// What a new-object wizard is, apart from what is to be seen of it: the host's own first page
/// (unless a primary extension asks for the name), the extensions' pages, a summary; what each page
/// is told and when; whom it may refuse; which buttons are enabled; what Next, Back, Finish and
/// Cancel mean.
///
/// A page's dialog is made when the page first shows. A page that is being told something is not to
/// be disturbed: whatever is asked of the wizard meanwhile is refused.
///
/// The faces drive it by the functions that stand for what a person does; each answers whether it
/// was done. After `Finish` and `Cancel` have answered true the wizard is closed: its face takes
/// its dialogs down and then ends the session and the pages by `Close`.
class WizardMachine {
 public:
  /// `templates` holds the pages' templates; it and `view` outlive the machine. `setup` says how
  /// many pages are the host's own.
  WizardMachine(const resources::ResourceFile& templates, IPageView& view, NewObjectSetup setup);
  WizardMachine(const WizardMachine&) = delete;
  WizardMachine& operator=(const WizardMachine&) = delete;
  ~WizardMachine() { Close(); }

  /// Takes an extension with its pages, before the wizard is shown. Any other answer than `S_OK`
  /// leaves it out.
  [[nodiscard]] HRESULT AddExtension(Ref<IDsAdminNewObjExt> extension, WizardRole role);
  /// Brings up the first page.
  void Show();
  [[nodiscard]] bool IsOpen() const { return state_ == State::kOpen; }
  /// Nothing is made; lets go of the extensions, then destroys the pages.
  void Close();

  /// Titles, templates and controllers of the extensions' pages, which of them was shown, and which
  /// page shows. The summary is the last of all.
  [[nodiscard]] const SheetPages& pages() const { return pages_; }
  /// How many places in front are the host's own.
  [[nodiscard]] std::size_t OwnPages() const { return own_pages_; }
  [[nodiscard]] bool IsOwnPage() const { return pages_.Current() < own_pages_; }
  [[nodiscard]] bool IsSummary() const { return pages_.Current() + 1 == pages_.Count(); }

  [[nodiscard]] bool IsBackEnabled() const { return IsOpen() && pages_.Current() > 0; }
  [[nodiscard]] bool IsNextEnabled() const;
  /// The host's own page is complete, or not any more: decides whether it can be left.
  void SetOwnPageComplete(bool complete);

  /// Goes on. From the host's own page that makes the temporary object, under `own_name`.
  bool Next();
  bool Back();
  /// On the summary only: brings the object into the directory. `owner` is the window for boxes.
  /// The wizard closes when the object has been made; otherwise it stays open with everything that
  /// was typed.
  bool Finish(IDialog* owner);
  /// Closes the wizard and tells every page that was shown; the page that shows may prevent it.
  bool Cancel();

  /// What the extensions say of the new object, in their order.
  [[nodiscard]] std::vector<std::string> Summaries() const { return session_->Summaries(); }
  /// What became of the last Finish.
  [[nodiscard]] const std::optional<CreationResult>& result() const { return result_; }

  /// The name that the host's own page asks for. May be none where there is no such page.
  std::function<std::string()> own_name;
  /// The temporary object could not be made, or Finish has failed. May be none.
  std::function<void(const CreationResult& failure)> on_failure;

 private:
  enum class State : std::uint8_t { kFilling, kOpen, kClosed };

  /// Whether the wizard can be used now.
  [[nodiscard]] bool IsIdle() const { return IsOpen() && !is_busy_; }
  /// Asks the page that shows whether it may be left this way; where to, or none.
  [[nodiscard]] std::optional<std::size_t> Leave(PageNotification way, std::size_t neighbour);
  [[nodiscard]] bool PrepareObject();
  void Activate(std::size_t page, Direction direction);
  void Fail(const CreationResult& failure) const;

  IPageView& view_;
  std::size_t own_pages_;
  SheetPages pages_;
  /// Holds on to the extensions, which the pages keep: it ends before them.
  std::unique_ptr<NewObjectSession> session_;
  std::optional<CreationResult> result_;
  State state_ = State::kFilling;
  /// What an extension last said of Next while its page, the one that shows, has been showing.
  bool next_enabled_ = true;
  bool own_page_complete_ = false;
  /// A page or an extension is being told something.
  bool is_busy_ = false;
};

}  // namespace pelora::sheets
