// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "hosts/headless/headless_dialog.h"
#include "hosts/headless/headless_user.h"
#include "pages/snap_in_property_page.h"
#include "tests/support/selection_data_object.h"

namespace pelora::testing {

/// A page whose dialog stands open, without a sheet around it, and the person in front of it.
template <class Page>
class StandingPage {
 public:
  /// Initialises `page`, whose one reference it takes over, with the paths and makes its dialog.
  StandingPage(Page* page, const resources::DialogTemplate& described,
               const std::vector<std::string>& paths)
      : page_(Ref<Page>::Adopt(page)), dialog_(described, *page), user_(dialog_) {
    SelectionDataObject selection(paths);
    IShellExtInit& extension = *page;
    initialized_ = extension.Initialize(&selection);
    opened_ = dialog_.Open();
  }

  /// What the test of the connection, and what binding and loading answered.
  [[nodiscard]] HRESULT initialized() const { return initialized_; }
  [[nodiscard]] HRESULT opened() const { return opened_; }
  [[nodiscard]] Page& page() { return *page_; }
  [[nodiscard]] HeadlessDialog& dialog() { return dialog_; }
  [[nodiscard]] HeadlessUser& user() { return user_; }
  [[nodiscard]] IListBox& List(ControlId id) { return dialog_.ListBox(id); }

  [[nodiscard]] std::vector<std::string> Rows(ControlId id) {
    std::vector<std::string> rows;
    for (RowIndex row = 0; row < List(id).Count(); ++row) rows.push_back(List(id).Text(row));
    return rows;
  }
  /// Selects the row of a text, as its click does.
  void SelectRow(ControlId id, const std::string& text) {
    const std::vector<std::string> rows = Rows(id);
    const auto row = static_cast<RowIndex>(std::ranges::find(rows, text) - rows.begin());
    EXPECT_EQ(user_.SelectListRow(id, row), UserAnswer::kDone) << text;
  }
  void Click(ControlId id) { EXPECT_EQ(user_.Click(id), UserAnswer::kDone) << id; }
  void Type(ControlId id, const std::string& text) {
    EXPECT_EQ(user_.EraseText(id), UserAnswer::kDone) << id;
    EXPECT_EQ(user_.TypeText(id, text), UserAnswer::kDone) << id;
  }
  /// Whether the sheet's Apply button would be enabled.
  [[nodiscard]] bool IsModified() const { return dialog_.PageModified().value_or(false); }
  /// Clicks Apply; whether everything was written.
  bool Apply() { return page_->OnPageNotification(PageNotification::kApply) == kPageApplied; }

 private:
  Ref<Page> page_;
  HeadlessDialog dialog_;
  HeadlessUser user_;
  HRESULT initialized_ = S_OK;
  HRESULT opened_ = S_OK;
};

}  // namespace pelora::testing
