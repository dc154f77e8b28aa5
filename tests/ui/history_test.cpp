// SPDX-License-Identifier: Apache-2.0
// What was written is taken back, and done again, from the main window.
#include <gmock/gmock.h>

#include <QAction>
#include <QDialogButtonBox>
#include <QStatusBar>

#include "hosts/console/window/main_window.h"
#include "hosts/console/writing/history_dialog.h"
#include "tests/ui/writing_sheet.h"

namespace pelora::test {
namespace {

using console::ToUtf8;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

constexpr int kPatience = 20000;

class HistoryWindow : public WritingSheet {
 protected:
  HistoryWindow() : objects_(Objects({kBirgit})), window_(module()) {
    if (!window_.SetSession(TakeSession())) throw std::runtime_error("no session");
    window_.show();
  }
  ~HistoryWindow() override {
    EXPECT_TRUE(QTest::qWaitFor([this] { return !window_.IsReading(); }, kPatience));
  }
  /// Ticks or clears the box of a user and writes it.
  void ToggleHidden() {
    window_.ShowProperties(objects_);
    console::QtPropertySheet& sheet = *window_.sheets().Open().front();
    sheet.Dialog(0)->Find(IDC_PELORA_HIDDEN)->Click();
    sheet.accept();
    QCoreApplication::processEvents();
  }
  void Trigger(const char* text) {
    for (QAction* action : window_.findChildren<QAction*>()) {
      if (ToUtf8(action->text()) == text) return action->trigger();
    }
    FAIL() << "there is no action " << text;
  }
  [[nodiscard]] std::string Said() { return ToUtf8(window_.statusBar()->currentMessage()); }

 private:
  const contract::PassedOver errands_{};
  std::vector<session::DirectoryObject> objects_;
  console::MainWindow window_;
};

TEST_F(HistoryWindow, TheLastChangeIsTakenBackAndDoneAgain) {
  Trigger("&Undo Last Change");
  EXPECT_EQ(Said(), "There is nothing to take back.");
  ToggleHidden();
  EXPECT_TRUE(IsHidden(kBirgit));
  Trigger("&Undo Last Change");
  EXPECT_EQ(Said(), "Taken back: Birgit Krämer (Hide from addressbook)");
  EXPECT_FALSE(IsHidden(kBirgit));
  Trigger("&Redo");
  EXPECT_EQ(Said(), "Done again: Birgit Krämer (Hide from addressbook)");
  EXPECT_TRUE(IsHidden(kBirgit));
  Trigger("&Redo");
  EXPECT_EQ(Said(), "There is nothing to do again.");
}

TEST_F(HistoryWindow, WhatSomebodyHasChangedSinceIsLeftAloneAndSaid) {
  ToggleHidden();
  ModifyEntry(file(), std::string("dn: ") + kBirgit +
                          "\nchangetype: modify\nreplace: peloraHidden\npeloraHidden: 0\n");
  In("results", [](QWidget& window) {
    EXPECT_THAT(
        RowsOf(Part<QTableView>(window, "results_table")),
        ElementsAre(StartsWith(
            "refused|Birgit Krämer|Changed meanwhile by someone else: peloraHidden was 1, is 0 "
            "now, and was to become not set")));
  });
  Trigger("&Undo Last Change");
  EXPECT_EQ(modal_scripts().waiting(), 0U);
  EXPECT_FALSE(IsHidden(kBirgit));
}

TEST_F(HistoryWindow, EveryChangeIsListedAndTakenBackByItself) {
  ToggleHidden();
  ToggleHidden();
  In("history", [&](QWidget& window) {
    auto& table = Part<QTableWidget>(window, "history_table");
    ASSERT_EQ(table.rowCount(), 2);
    EXPECT_EQ(ToUtf8(table.item(0, 1)->text()), "Birgit Krämer");
    EXPECT_EQ(ToUtf8(table.item(0, 2)->text()), "Hide from addressbook");
    auto& undo = Part<QPushButton>(window, "history_undo");
    auto& redo = Part<QPushButton>(window, "history_redo");
    EXPECT_FALSE(redo.isEnabled());
    undo.click();
    EXPECT_EQ(ToUtf8(table.item(0, 3)->text()), "taken back");
    EXPECT_FALSE(undo.isEnabled());
    EXPECT_TRUE(IsHidden(kBirgit));
    table.selectRow(1);
    undo.click();
    EXPECT_FALSE(IsHidden(kBirgit));
    redo.click();
    EXPECT_TRUE(IsHidden(kBirgit));
  });
  Trigger("&Changes...");
  EXPECT_EQ(modal_scripts().waiting(), 0U);
}

TEST(History, OfThousandsOfObjectsAFewAreNamed) {
  std::vector<std::string> names;
  for (int number = 0; number < 5000; ++number) names.push_back("User " + std::to_string(number));
  console::HistoryDialog dialog(
      [&] {
        return std::vector<session::PastChange>{
            {.id = "x", .objects = names, .fields = {"Hide from addressbook"}}};
      },
      nullptr);
  const auto& table = Part<QTableWidget>(dialog, "history_table");
  EXPECT_EQ(ToUtf8(table.item(0, 1)->text()), "User 0, User 1, User 2 and 4997 more");
  const std::string tip = ToUtf8(table.item(0, 1)->toolTip());
  EXPECT_THAT(tip, HasSubstr("User 19"));
  EXPECT_THAT(tip, HasSubstr("and 4980 more"));
  EXPECT_THAT(tip, ::testing::Not(HasSubstr("User 20")));
}

}  // namespace
}  // namespace pelora::test
