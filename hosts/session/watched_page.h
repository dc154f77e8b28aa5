// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "hosts/sheets/scoped_flag.h"
#include "hosts/sheets/sheet_pages.h"
#include "platform/shell_extension.h"

namespace pelora::session {

/// Who looks on while a page is used.
struct PageWatch {
  /// The dialog stands and has been filled.
  std::function<void(IDialog& dialog)> on_loaded;
  /// A control has reported something. Not told while the page applies: what is put into its
  /// controls then is put there by the page itself, which fills itself when it could not before.
  std::function<void(ControlId control)> on_command;
  /// The page has dealt with something that was reported to it; not told while it applies, either.
  std::function<void()> on_handled;
  /// The page is about to apply.
  std::function<void(IDialog& dialog)> on_apply;
  /// The page has applied: what it staged is recorded, and not written yet.
  std::function<void()> on_applied;
  /// The page, which is itself not watched here, has not applied.
  std::function<void(IDialog& dialog, IDialogController& page)> on_refused;
  /// The dialog goes.
  std::function<void()> on_gone;
};

/// A page of a sheet with somebody who looks on. One that cannot apply is shown, though the page
/// itself asks for no more than that the sheet stays. The watch may be used until the page is
/// destroyed.
class WatchedPage final : public PropSheetPage, private IDialogController {
 public:
  WatchedPage(std::unique_ptr<PropSheetPage> page, PageWatch watch)
      : page_(std::move(page)), watch_(std::move(watch)) {}

  [[nodiscard]] DialogId Template() const override { return page_->Template(); }
  [[nodiscard]] std::string Title() const override { return page_->Title(); }
  [[nodiscard]] IDialogController& Controller() override { return *this; }

 private:
  std::int32_t OnInitDialog(IDialog& dialog) override {
    dialog_ = &dialog;
    const std::int32_t result = page_->Controller().OnInitDialog(dialog);
    watch_.on_loaded(dialog);
    return result;
  }
  std::int32_t OnCommand(ControlId id, ControlNotification notification) override {
    if (!is_applying_) watch_.on_command(id);
    const std::int32_t answer = page_->Controller().OnCommand(id, notification);
    TellHandled();
    return answer;
  }
  void OnListViewItemChanged(ControlId id, const ListViewItemChange& change) override {
    page_->Controller().OnListViewItemChanged(id, change);
    TellHandled();
  }
  void OnListViewDoubleClick(ControlId id, RowIndex row) override {
    page_->Controller().OnListViewDoubleClick(id, row);
    TellHandled();
  }
  [[nodiscard]] TextRole ListViewTextRole(ControlId id, RowIndex row,
                                          std::size_t column) const override {
    return page_->Controller().ListViewTextRole(id, row, column);
  }
  std::int32_t OnPageNotification(PageNotification notification) override {
    IDialogController& page = page_->Controller();
    if (notification != PageNotification::kApply) return page.OnPageNotification(notification);
    if (dialog_ != nullptr) watch_.on_apply(*dialog_);
    const std::int32_t answer = Apply(page);
    if (answer == kPageApplied) {
      watch_.on_applied();
    } else if (dialog_ != nullptr) {
      watch_.on_refused(*dialog_, page);
    }
    return answer == kPageInvalidStay ? sheets::kPageInvalidShow : answer;
  }
  void OnDestroy() override {
    dialog_ = nullptr;
    watch_.on_gone();
    page_->Controller().OnDestroy();
  }

  std::int32_t Apply(IDialogController& page) {
    const sheets::ScopedFlag applying(is_applying_);
    return page.OnPageNotification(PageNotification::kApply);
  }
  void TellHandled() {
    if (!is_applying_) watch_.on_handled();
  }

  std::unique_ptr<PropSheetPage> page_;
  PageWatch watch_;
  bool is_applying_ = false;
  /// While there is one.
  IDialog* dialog_ = nullptr;
};

}  // namespace pelora::session
