// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "hosts/headless/headless_component_library.h"
#include "hosts/headless/headless_dialog.h"
#include "hosts/headless/headless_message_box.h"
#include "hosts/headless/headless_modal_dialogs.h"
#include "hosts/headless/headless_text_service.h"
#include "hosts/headless/headless_user.h"
#include "hosts/resources/resource_file.h"
#include "pages/snap_in_property_page.h"
#include "tests/support/fake_choosers.h"
#include "tests/support/selection_data_object.h"

namespace pelora::lab {

/// What a page runs on in the lab: dialogs in memory, and a directory of the test's choice.
class LabBench {
 public:
  explicit LabBench(IDirectoryService& directory)
      : platform_{directory, messages, dialogs_, choosers_, text_, library_} {}

  HeadlessMessageBox messages;

  [[nodiscard]] const Platform& platform() const { return platform_; }
  /// Where the dialogs that a page opens are played.
  [[nodiscard]] HeadlessModalDialogs& dialogs() { return dialogs_; }
  [[nodiscard]] testing::FakeChoosers& choosers() { return choosers_; }
  [[nodiscard]] const resources::ResourceFile& templates() const { return templates_; }
  [[nodiscard]] resources::DialogTemplate Template(DialogId dialog) const {
    return templates_.Dialog(dialog).value.value();
  }
  /// The boxes that have been shown, one line each, in which "|" stands for the end of a line.
  [[nodiscard]] std::string Boxes() const {
    std::string boxes;
    for (const HeadlessMessageBox::Record& record : messages.records()) {
      for (const char letter : record.message.text) {
        if (letter != '\r') boxes += letter == '\n' ? '|' : letter;
      }
      boxes += "\n";
    }
    return boxes;
  }

 private:
  static resources::ResourceFile Templates() {
    auto read = resources::ResourceFile::Read(resources::EmbeddedResourceBytes());
    return std::move(read.value).value();
  }

  resources::ResourceFile templates_ = Templates();
  HeadlessModalDialogs dialogs_{templates_};
  testing::FakeChoosers choosers_;
  HeadlessTextService text_;
  HeadlessComponentLibrary library_;
  Platform platform_;
};

/// A page that stands open on some objects.
template <class Page>
class LabPage {
 public:
  LabPage(LabBench& bench, DialogId dialog, const std::vector<std::string>& dns)
      : page_(Ref<Page>::Adopt(new Page(bench.platform()))),
        dialog_(bench.Template(dialog), *page_) {
    std::vector<std::string> paths;
    for (const std::string& dn : dns) paths.push_back("LDAP://" + dn);
    testing::SelectionDataObject selection(paths);
    IShellExtInit& extension = *page_;
    initialized_ = extension.Initialize(&selection);
    opened_ = dialog_.Open();
  }

  /// What the test of the connection, and what binding and loading answered.
  [[nodiscard]] HRESULT initialized() const { return initialized_; }
  [[nodiscard]] HRESULT opened() const { return opened_; }
  [[nodiscard]] HeadlessDialog& dialog() { return dialog_; }
  [[nodiscard]] HeadlessUser& user() { return user_; }

  void Click(ControlId id) { EXPECT_EQ(user_.Click(id), UserAnswer::kDone) << id; }
  void Type(ControlId id, const std::string& text) {
    EXPECT_EQ(user_.EraseText(id), UserAnswer::kDone) << id;
    EXPECT_EQ(user_.TypeText(id, text), UserAnswer::kDone) << id;
  }
  void SelectRow(ControlId id, const std::string& text) {
    const std::vector<std::string> rows = Rows(id);
    const auto row = static_cast<RowIndex>(std::ranges::find(rows, text) - rows.begin());
    EXPECT_EQ(user_.SelectListRow(id, row), UserAnswer::kDone) << text;
  }
  [[nodiscard]] std::vector<std::string> Rows(ControlId id) {
    std::vector<std::string> rows;
    IListBox& list = dialog_.ListBox(id);
    for (RowIndex row = 0; row < list.Count(); ++row) rows.push_back(list.Text(row));
    return rows;
  }
  /// Clicks Apply; whether everything was written.
  bool Apply() { return page_->OnPageNotification(PageNotification::kApply) == kPageApplied; }

 private:
  Ref<Page> page_;
  HeadlessDialog dialog_;
  HeadlessUser user_{dialog_};
  HRESULT initialized_ = S_OK;
  HRESULT opened_ = S_OK;
};

}  // namespace pelora::lab
