// SPDX-License-Identifier: Apache-2.0
// What a host hangs on a sheet, and what a sheet knows of edits, beside what every sheet owes its
// pages.
#include "hosts/sheets/sheet_machine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <optional>
#include <string>
#include <vector>

#include "hosts/headless/headless_property_sheet.h"
#include "resources/resource.h"

namespace pelora {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Writes down what each page is told, and answers as told to.
class PageController final : public IDialogController {
 public:
  PageController(std::vector<std::string>& log, std::string name)
      : log_(log), name_(std::move(name)) {}

  std::int32_t OnInitDialog(IDialog& dialog) override {
    dialog_ = &dialog;
    return 0;
  }
  std::int32_t OnCommand(ControlId /*id*/, ControlNotification /*told*/) override { return 0; }
  std::int32_t OnPageNotification(PageNotification notification) override {
    if (notification != PageNotification::kApply) return 0;
    log_.push_back("apply " + name_);
    // A page takes its mark back before it writes.
    dialog_->SetPageModified(false);
    if (runs_out_of_memory) throw std::bad_alloc();
    return apply_answer;
  }
  void OnDestroy() override { dialog_ = nullptr; }

  void Edit() { dialog_->SetPageModified(true); }
  void TakeBack() { dialog_->SetPageModified(false); }

  std::int32_t apply_answer = kPageApplied;
  bool runs_out_of_memory = false;

 private:
  std::vector<std::string>& log_;
  std::string name_;
  IDialog* dialog_ = nullptr;
};

class Page final : public PropSheetPage {
 public:
  explicit Page(PageController& controller) : controller_(controller) {}
  [[nodiscard]] DialogId Template() const override { return IDD_PROPPAGE_USER; }
  [[nodiscard]] std::string Title() const override { return {}; }
  [[nodiscard]] IDialogController& Controller() override { return controller_; }

 private:
  PageController& controller_;
};

/// A sheet of two pages, both shown, the second on top; commits are written down and may fail.
class SheetMachineTest : public testing::Test {
 protected:
  SheetMachineTest() {
    EXPECT_TRUE(sheet.AddPage(std::make_unique<Page>(first)));
    EXPECT_TRUE(sheet.AddPage(std::make_unique<Page>(second)));
    sheet.Show();
    EXPECT_TRUE(sheet.SelectPage(1));
    sheet.machine().commit = [this] {
      log.push_back("commit");
      return failing;
    };
  }

  std::vector<std::string> log;
  std::optional<std::size_t> failing;
  PageController first{log, "first"};
  PageController second{log, "second"};
  resources::ResourceFile templates =
      resources::ResourceFile::Read(resources::EmbeddedResourceBytes()).value.value();
  HeadlessPropertySheet sheet{templates};
};

TEST_F(SheetMachineTest, WhatThePagesWroteIsCommittedWhenAllHaveApplied) {
  EXPECT_TRUE(sheet.Ok());
  EXPECT_THAT(log, ElementsAre("apply first", "apply second", "commit"));
}

TEST_F(SheetMachineTest, APageWhoseCommitFailsIsShownAndHasChangesAgain) {
  failing = 0;
  first.Edit();
  EXPECT_FALSE(sheet.Apply());
  EXPECT_THAT(log, ElementsAre("apply first", "apply second", "commit"));
  EXPECT_EQ(sheet.CurrentPage(), 0U);
  EXPECT_TRUE(sheet.IsApplyEnabled());
  EXPECT_TRUE(sheet.machine().HasUnsavedEdits());
  log.clear();
  failing.reset();
  EXPECT_TRUE(sheet.Apply());
  EXPECT_THAT(log, ElementsAre("apply first", "apply second", "commit"));
  EXPECT_FALSE(sheet.IsApplyEnabled());
  EXPECT_FALSE(sheet.machine().HasUnsavedEdits());
}

TEST_F(SheetMachineTest, OkDoesNotCloseOverACommitThatFails) {
  failing = 1;
  EXPECT_FALSE(sheet.Ok());
  EXPECT_TRUE(sheet.IsOpen());
  EXPECT_TRUE(sheet.machine().HasUnsavedEdits());
  EXPECT_FALSE(sheet.Ok());
  failing.reset();
  EXPECT_TRUE(sheet.Ok());
}

TEST_F(SheetMachineTest, WhereMemoryRunsOutInAPageAllHaveTheirChangesStill) {
  first.Edit();
  second.Edit();
  second.runs_out_of_memory = true;
  EXPECT_THROW(sheet.Apply(), std::bad_alloc);
  EXPECT_THAT(log, ElementsAre("apply first", "apply second"));
  EXPECT_TRUE(sheet.IsApplyEnabled());
  EXPECT_TRUE(sheet.machine().HasUnsavedEdits());
  log.clear();
  second.runs_out_of_memory = false;
  EXPECT_TRUE(sheet.Apply());
  EXPECT_THAT(log, ElementsAre("apply first", "apply second", "commit"));
  EXPECT_FALSE(sheet.machine().HasUnsavedEdits());
}

TEST_F(SheetMachineTest, APageBeforeOneThatDoesNotApplyHasItsChangesStill) {
  second.apply_answer = kPageInvalidStay;
  first.Edit();
  EXPECT_FALSE(sheet.Ok());
  EXPECT_THAT(log, ElementsAre("apply first", "apply second"));
  EXPECT_TRUE(sheet.IsApplyEnabled());
  EXPECT_TRUE(sheet.machine().HasUnsavedEdits());
}

TEST_F(SheetMachineTest, APageThatDoesNotApplyIsNotCommitted) {
  first.apply_answer = kPageInvalidStay;
  first.Edit();
  EXPECT_FALSE(sheet.Ok());
  EXPECT_THAT(log, ElementsAre("apply first"));
  // It took its mark back, but what was typed is nowhere.
  EXPECT_FALSE(sheet.IsApplyEnabled());
  EXPECT_TRUE(sheet.machine().HasUnsavedEdits());
}

TEST_F(SheetMachineTest, CancelAsksBeforeUnsavedEditsAreLostAndNotOtherwise) {
  int asked = 0;
  bool may_discard = false;
  sheet.machine().may_discard = [&] {
    ++asked;
    return may_discard;
  };
  first.Edit();
  EXPECT_FALSE(sheet.Cancel());
  EXPECT_TRUE(sheet.IsOpen());
  EXPECT_EQ(asked, 1);
  first.TakeBack();
  may_discard = true;
  EXPECT_TRUE(sheet.Cancel());
  EXPECT_EQ(asked, 1);
}

TEST_F(SheetMachineTest, TellsWhoeverWaitsAfterEveryRoundThatMayHaveWritten) {
  int rounds = 0;
  sheet.machine().on_applied = [&rounds] { ++rounds; };
  EXPECT_FALSE(sheet.Apply());
  EXPECT_EQ(rounds, 0);
  first.Edit();
  EXPECT_TRUE(sheet.Apply());
  EXPECT_EQ(rounds, 1);
  failing = {1};
  EXPECT_FALSE(sheet.Ok());
  EXPECT_EQ(rounds, 2);
}

}  // namespace
}  // namespace pelora
