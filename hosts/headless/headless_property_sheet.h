// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>

#include "hosts/headless/headless_pages_view.h"
#include "hosts/headless/headless_user.h"
#include "hosts/resources/resource_file.h"
#include "hosts/sheets/sheet_machine.h"

namespace pelora {

/// A property sheet in memory: a sheet machine with dialogs in memory.
class HeadlessPropertySheet {
 public:
  /// `templates` outlives the sheet.
  explicit HeadlessPropertySheet(const resources::ResourceFile& templates);
  HeadlessPropertySheet(const HeadlessPropertySheet&) = delete;
  HeadlessPropertySheet& operator=(const HeadlessPropertySheet&) = delete;
  /// Closes the sheet without asking its pages.
  ~HeadlessPropertySheet() { Close(); }

  /// Takes a page before the sheet is shown, or refuses (and destroys) it: when its template cannot
  /// be read, and when the sheet has been shown.
  bool AddPage(std::unique_ptr<PropSheetPage> page) { return machine_.AddPage(std::move(page)); }
  /// `AddPage` in the form in which extensions get it. Not to be used after the sheet is gone.
  [[nodiscard]] AddPropSheetPage PageTaker();

  /// Shows the first page. A sheet without pages stays closed.
  void Show() { machine_.Show(); }
  [[nodiscard]] bool IsOpen() const { return machine_.IsOpen(); }

  [[nodiscard]] std::size_t PageCount() const { return machine_.pages().Count(); }
  [[nodiscard]] std::size_t CurrentPage() const { return machine_.pages().Current(); }
  /// The tab's text.
  [[nodiscard]] std::string Title(std::size_t page) const { return machine_.pages().Title(page); }
  /// The page's dialog; null while it has not been shown.
  [[nodiscard]] HeadlessDialog* Dialog(std::size_t page) { return view_.Dialog(page); }
  /// The person in front of the current page of an open sheet.
  [[nodiscard]] HeadlessUser User() { return HeadlessUser(*Dialog(CurrentPage())); }
  /// For what a host hangs on it: what is done with what a page wrote, who is asked, who is told.
  [[nodiscard]] sheets::SheetMachine& machine() { return machine_; }

  // What a person does; see `SheetMachine`. Each answers whether it was done.
  bool SelectPage(std::size_t page) { return machine_.SelectPage(page); }
  [[nodiscard]] bool IsApplyEnabled() const { return machine_.IsApplyEnabled(); }
  bool Apply() { return machine_.Apply(); }
  bool Ok();
  bool Cancel();

 private:
  void Close();

  // The dialogs go before the pages.
  HeadlessPagesView view_;
  sheets::SheetMachine machine_;
};

}  // namespace pelora
