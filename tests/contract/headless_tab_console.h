// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "hosts/headless/headless_message_box.h"
#include "hosts/headless/headless_modal_dialogs.h"
#include "hosts/headless/headless_property_sheet.h"
#include "server/class_table.h"
#include "server/component_server.h"
#include "tests/contract/headless_player.h"
#include "tests/contract/tab_company.h"
#include "tests/contract/tab_contract.h"
#include "tests/support/fake_choosers.h"
#include "tests/support/fault_directory.h"
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
    pelora::testing::FaultPlan& faults;
  };

  ~HeadlessTabConsole() override {
    EXPECT_EQ(bench_.messages.records().size(), boxes_taken_);
    EXPECT_EQ(bench_.dialogs.ScriptsLeft(), 0U);
  }

  void Open(const std::string& component, const std::vector<std::string>& names) override {
    Ref<IShellExtInit> tab;
    ASSERT_EQ(CreateComponent(FindClass(component)->class_id, bench_.platform, IID_IShellExtInit,
                              reinterpret_cast<void**>(tab.Put())),
              S_OK);
    pelora::testing::SelectionDataObject selection(PathsOf(names));
    EXPECT_EQ(tab->Initialize(&selection), S_OK);
    player_.reset();
    sheet_.emplace(bench_.templates);
    EXPECT_EQ(Query<IShellPropSheetExt>(*tab)->AddPages(sheet_->PageTaker()), S_OK);
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
  void PlayNext(DialogScript script) override {
    bench_.dialogs.PlayNext([script = std::move(script)](HeadlessUser& user) {
      HeadlessPlayer player(user.dialog());
      script(player);
    });
  }
  void AwaitBox(std::int32_t answer) override { bench_.messages.AnswerNext(answer); }
  [[nodiscard]] TabBox TakeBox() override {
    if (bench_.messages.records().size() == boxes_taken_) return {};
    return ToTabBox(bench_.messages.records()[boxes_taken_++].message);
  }

  [[nodiscard]] bool IsApplyEnabled() const override { return sheet_->IsApplyEnabled(); }
  void ClickApply() override { sheet_->Apply(); }
  void ClickOk() override { sheet_->Ok(); }
  [[nodiscard]] bool IsOpen() const override { return sheet_->IsOpen(); }

  void FailPut(const std::string& attribute, std::size_t nth) override {
    bench_.faults.FailAttribute(FaultPoint::kPut, attribute, nth, E_ACCESSDENIED);
  }
  void FailCommit(std::size_t nth) override {
    bench_.faults.Fail(FaultPoint::kSetInfo, nth, E_ACCESSDENIED);
  }

 protected:
  explicit HeadlessTabConsole(const Bench& bench) : bench_(bench) {}

 private:
  using FaultPoint = pelora::testing::FaultPoint;

  static std::vector<std::string> PathsOf(const std::vector<std::string>& names) {
    std::vector<std::string> paths;
    for (const std::string& name : names) paths.push_back(TabPathOf(name));
    return paths;
  }

  Bench bench_;
  std::optional<HeadlessPropertySheet> sheet_;
  std::optional<HeadlessPlayer> player_;
  std::size_t boxes_taken_ = 0;
};

}  // namespace pelora::contract
