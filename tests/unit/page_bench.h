// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
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
#include "tests/support/fake_directory.h"
#include "tests/support/fault_directory.h"
#include "tests/support/selection_data_object.h"

namespace pelora::testing {

/// All that a page is run on in a unit test: a directory in memory whose calls can be made to fail,
/// dialogs without a window made from the module's own templates, and choosers in which nobody
/// chooses.
class PageBench {
 public:
  PageBench() : templates_(Templates()) {}

  [[nodiscard]] resources::DialogTemplate Template(DialogId dialog) const {
    const auto read = templates_.Dialog(dialog);
    EXPECT_TRUE(read.value.has_value()) << read.error;
    return read.value.value_or(resources::DialogTemplate{});
  }
  [[nodiscard]] const resources::ResourceFile& templates() const { return templates_; }

  /// A dialog to stand for the one that owns another.
  [[nodiscard]] IDialog* some_dialog() { return &owner_; }

  /// The calls that stage and commit changes.
  [[nodiscard]] std::vector<std::string> Writes() const {
    using enum DirectoryCall::Kind;
    return directory.Log({kPut, kPutEx, kSetInfo});
  }

 private:
  class Idle final : public IDialogController {
   public:
    std::int32_t OnInitDialog(IDialog& /*dialog*/) override { return 0; }
    std::int32_t OnCommand(ControlId /*id*/, ControlNotification /*notification*/) override {
      return 0;
    }
    void OnDestroy() override {}
  };

  /// Read once: a test may make thousands of benches.
  static const resources::ResourceFile& Templates() {
    static const resources::ResourceFile templates =
        resources::ResourceFile::Read(resources::EmbeddedResourceBytes()).value.value();
    return templates;
  }

  const resources::ResourceFile& templates_;
  Idle idle_;
  HeadlessDialog owner_{resources::DialogTemplate{}, idle_};

 public:
  FakeDirectory directory;
  FaultDirectory faulty{directory};
  HeadlessMessageBox messages;
  HeadlessModalDialogs dialogs{templates_};
  FakeChoosers choosers;
  HeadlessTextService text;
  HeadlessComponentLibrary library;
  Platform platform{faulty, messages, dialogs, choosers, text, library};
};

/// A page whose dialog stands open, without a sheet around it.
template <class Page>
class OpenPage {
 public:
  /// Initialises `page`, whose one reference it takes over, with the paths and makes its dialog.
  OpenPage(PageBench& bench, Page* page, const resources::DialogTemplate& described,
           const std::vector<std::string>& paths)
      : page_(Ref<Page>::Adopt(page)), dialog_(described, *page), user_(dialog_) {
    SelectionDataObject selection(paths);
    IShellExtInit& extension = *page;
    EXPECT_EQ(extension.Initialize(&selection), S_OK);
    EXPECT_EQ(dialog_.Open(), S_OK);
    bench.directory.ClearCalls();
  }

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
};

}  // namespace pelora::testing
