// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "hosts/headless/headless_user.h"
#include "hosts/resources/resource_file.h"
#include "platform/shell_extension.h"

namespace pelora {

/// A property sheet in memory: it holds pages, makes the dialog of a page when the page is first
/// shown, and passes on what its buttons mean, in the order of a sheet on the screen.
class HeadlessPropertySheet {
 public:
  /// `templates` outlives the sheet.
  explicit HeadlessPropertySheet(const resources::ResourceFile& templates)
      : templates_(templates) {}
  HeadlessPropertySheet(const HeadlessPropertySheet&) = delete;
  HeadlessPropertySheet& operator=(const HeadlessPropertySheet&) = delete;
  /// Closes the sheet without asking its pages.
  ~HeadlessPropertySheet() { Close(); }

  /// Takes a page before the sheet is shown, or refuses (and destroys) it: when its template cannot
  /// be read, and when the sheet has been shown.
  bool AddPage(std::unique_ptr<PropSheetPage> page);
  /// `AddPage` in the form in which extensions get it. Not to be used after the sheet is gone.
  [[nodiscard]] AddPropSheetPage PageTaker();

  /// Shows the first page. A sheet without pages stays closed.
  void Show();
  [[nodiscard]] bool IsOpen() const { return open_; }

  [[nodiscard]] std::size_t PageCount() const { return pages_.size(); }
  [[nodiscard]] std::size_t CurrentPage() const { return current_; }
  /// The tab's text.
  [[nodiscard]] std::string Title(std::size_t page) const;
  /// The page's dialog; null while it has not been shown.
  [[nodiscard]] HeadlessDialog* Dialog(std::size_t page);
  /// The person in front of the current page of an open sheet.
  [[nodiscard]] HeadlessUser User() { return HeadlessUser(*pages_[current_].dialog); }

  /// Clicks a tab: the current page may refuse to be left, and then stays.
  bool SelectPage(std::size_t page);
  /// Whether some page has changes to apply.
  [[nodiscard]] bool IsApplyEnabled() const;
  /// Clicks Apply. True when every page shown so far has applied its changes. The first page that
  /// does not ends the round; the pages before it have applied theirs.
  bool Apply();
  /// Clicks OK: applies, changed or not, and closes the sheet when every page has applied.
  bool Ok();
  /// Clicks Cancel; the current page may prevent it. Otherwise every page shown is told and the
  /// sheet closes.
  bool Cancel();

 private:
  struct Page {
    std::unique_ptr<PropSheetPage> page;
    resources::DialogTemplate described;
    std::unique_ptr<HeadlessDialog> dialog;
  };

  static std::int32_t Tell(Page& page, PageNotification notification);
  void Activate(std::size_t page);
  bool ApplyPages();
  void Close();

  const resources::ResourceFile& templates_;
  std::vector<Page> pages_;
  std::size_t current_ = 0;
  bool open_ = false;
  bool was_shown_ = false;
};

}  // namespace pelora
