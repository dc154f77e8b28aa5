// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "hosts/headless/headless_message_box.h"
#include "hosts/headless/headless_modal_dialogs.h"
#include "hosts/headless/headless_property_sheet.h"
#include "pages/snap_in_property_page.h"
#include "resources/resource.h"
#include "server/class_table.h"
#include "tests/contract/headless_player.h"
#include "tests/contract/tab_company.h"
#include "tests/contract/tab_contract.h"
#include "tests/support/fake_choosers.h"
#include "tests/support/selection_data_object.h"

namespace pelora::contract {

/// A console in memory. Which directory it works on is its platform's business.
class HeadlessTabConsole : public TabConsole {
 public:
  /// What the pages are run on; everything outlives the console.
  struct Bench {
    const Platform& platform;
    const resources::ResourceFile& templates;
    HeadlessMessageBox& messages;
    HeadlessModalDialogs& dialogs;
    pelora::testing::FakeChoosers& choosers;
  };

  void Open(const std::string& component, const std::vector<std::string>& names) override {
    IUnknown* made = FindClass(component)->create(bench_.platform);
    const auto page = Ref<CSnapInPropertyPage>::Adopt(dynamic_cast<CSnapInPropertyPage*>(made));
    pelora::testing::SelectionDataObject selection(PathsOf(names));
    EXPECT_EQ(static_cast<IShellExtInit&>(*page).Initialize(&selection), S_OK);
    sheet_.emplace(bench_.templates);
    EXPECT_EQ(page->AddPages(sheet_->PageTaker()), S_OK);
    sheet_->Show();
    player_.emplace(*sheet_->Dialog(0));
  }
  void Close() override { sheet_->Cancel(); }
  [[nodiscard]] IDialog& Page() override { return *sheet_->Dialog(0); }
  [[nodiscard]] DialogPlayer& User() override { return *player_; }

  void Pick(const std::vector<std::string>& names) override {
    bench_.choosers.Choose(PathsOf(names));
  }
  void Find(const std::vector<std::string>& names) override {
    bench_.choosers.Find(pelora::testing::ChosenObjects::AsObjectNames(PathsOf(names)));
  }
  void Browse(const std::string& name) override {
    bench_.choosers.Browse(kDialogOk, TabPathOf(name));
  }
  void TypeAddress(const std::string& address) override {
    bench_.dialogs.PlayNext([address](HeadlessUser& user) {
      user.EraseText(IDC_EMAIL_ADDRESS);
      user.TypeText(IDC_EMAIL_ADDRESS, address);
      user.Click(static_cast<ControlId>(kDialogOk));
    });
  }
  void AwaitBox() override { boxes_ = bench_.messages.records().size(); }
  [[nodiscard]] std::string TakeBox() override {
    if (bench_.messages.records().size() != boxes_ + 1) return "no box";
    const std::string& text = bench_.messages.records().back().message.text;
    return text.substr(0, text.find('\r'));
  }

  [[nodiscard]] bool IsApplyEnabled() const override { return sheet_->IsApplyEnabled(); }
  void ClickApply() override { sheet_->Apply(); }
  void ClickOk() override { sheet_->Ok(); }
  [[nodiscard]] bool IsOpen() const override { return sheet_->IsOpen(); }

 protected:
  explicit HeadlessTabConsole(const Bench& bench) : bench_(bench) {}

 private:
  static std::vector<std::string> PathsOf(const std::vector<std::string>& names) {
    std::vector<std::string> paths;
    for (const std::string& name : names) paths.push_back(TabPathOf(name));
    return paths;
  }

  Bench bench_;
  std::optional<HeadlessPropertySheet> sheet_;
  std::optional<HeadlessPlayer> player_;
  std::size_t boxes_ = 0;
};

}  // namespace pelora::contract
