// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>

#include "hosts/headless/headless_dialog.h"
#include "hosts/sheets/sheet_pages.h"

namespace pelora {

/// The dialogs in memory of a sheet's or wizard's pages. Nothing is drawn: showing needs nothing.
class HeadlessPagesView final : public sheets::IPageView {
 public:
  /// Where the pages are; set before the first is shown.
  const sheets::SheetPages* pages = nullptr;
  /// A page says whether it has changes to apply. May be none.
  std::function<void(std::size_t place, bool modified)> on_modified;

  /// Null while the page has not been shown, and for places that are none of a page's.
  [[nodiscard]] HeadlessDialog* Dialog(std::size_t place) {
    const auto found = dialogs_.find(place);
    return found == dialogs_.end() ? nullptr : found->second.get();
  }
  /// Tells the pages' controllers that their dialogs go.
  void Clear() { dialogs_.clear(); }

  void MakeDialog(std::size_t place) override {
    auto& dialog = dialogs_[place];
    dialog = std::make_unique<HeadlessDialog>(pages->Template(place), pages->Controller(place));
    dialog->on_page_modified = [this, place](bool modified) {
      if (on_modified) on_modified(place, modified);
    };
    dialog->Open();
  }
  void ShowPage(std::size_t /*place*/) override {}
  void UpdateButtons() override {}

 private:
  std::map<std::size_t, std::unique_ptr<HeadlessDialog>> dialogs_;
};

}  // namespace pelora
