// SPDX-License-Identifier: Apache-2.0
// What the console's sheet adds to what every sheet owes its pages.
#include "hosts/console/sheets/property_sheet.h"

#include <gmock/gmock.h>

#include <QPushButton>
#include <QTabWidget>

#include "hosts/console/text/qt_text.h"
#include "resources/resource.h"
#include "tests/ui/console_test.h"
#include "tests/ui/open_sheet.h"

namespace pelora::test {
namespace {

using console::QtPropertySheet;
using ::testing::ElementsAre;

/// A page's controller that notes what the sheet tells it and answers as told to.
class Controller final : public IDialogController {
 public:
  std::int32_t OnInitDialog(IDialog& dialog) override {
    dialog_ = &dialog;
    return 0;
  }
  std::int32_t OnCommand(ControlId, ControlNotification) override { return 0; }
  std::int32_t OnPageNotification(PageNotification notification) override {
    told.push_back(notification);
    if (notification != PageNotification::kApply) return 0;
    if (on_apply) on_apply();
    return apply_answer;
  }
  void OnDestroy() override { dialog_ = nullptr; }

  [[nodiscard]] IDialog& dialog() const { return *dialog_; }

  std::vector<PageNotification> told;
  std::int32_t apply_answer = kPageApplied;
  std::function<void()> on_apply;

 private:
  IDialog* dialog_ = nullptr;
};

class Page final : public PropSheetPage {
 public:
  Page(IDialogController& controller, DialogId dialog, std::string title)
      : controller_(controller), dialog_(dialog), title_(std::move(title)) {}
  [[nodiscard]] DialogId Template() const override { return dialog_; }
  [[nodiscard]] std::string Title() const override { return title_; }
  [[nodiscard]] IDialogController& Controller() override { return controller_; }

 private:
  IDialogController& controller_;
  DialogId dialog_;
  std::string title_;
};

/// A sheet of two pages, both shown already, the second on top.
class TwoPageSheet : public ConsoleTest {
 protected:
  TwoPageSheet() : sheet_(module(), QStringLiteral("Properties")) {
    EXPECT_TRUE(Add(first, "One & two"));
    EXPECT_TRUE(Add(second, "Second"));
    sheet_.Start();
    sheet_.show();
    sheet_.SelectPage(1);
    first.told.clear();
    second.told.clear();
  }

  [[nodiscard]] bool Add(Controller& controller, const char* title,
                         DialogId dialog = IDD_PROPPAGE_USER) {
    return sheet_.AddPage(std::make_unique<Page>(controller, dialog, title));
  }
  [[nodiscard]] QtPropertySheet& sheet() { return sheet_; }

  Controller first;
  Controller second;

 private:
  QtPropertySheet sheet_;
};

TEST_F(TwoPageSheet, ThePageWhoseChangesCouldNotBeWrittenIsShown) {
  first.dialog().SetPageModified(true);
  sheet().machine().commit = [] { return std::optional<std::size_t>(0); };
  sheet().accept();
  EXPECT_TRUE(sheet().isVisible());
  EXPECT_EQ(sheet().CurrentPage(), 0U);
  EXPECT_EQ(sheet().findChild<QTabWidget*>()->currentIndex(), 0);
  EXPECT_TRUE(sheet().HasUnsavedEdits());
  EXPECT_TRUE(sheet().ApplyButton().isEnabled());
  EXPECT_THAT(first.told, ElementsAre(PageNotification::kApply));
  EXPECT_THAT(second.told, ElementsAre(PageNotification::kKillActive, PageNotification::kApply));
}

TEST_F(TwoPageSheet, PagesThatAppliedBeforeAFailureHaveNothingLeftToLose) {
  first.dialog().SetPageModified(true);
  second.apply_answer = kPageInvalidStay;
  sheet().accept();
  EXPECT_TRUE(sheet().isVisible());
  EXPECT_FALSE(sheet().HasUnsavedEdits());
  // The round is to be done again.
  EXPECT_TRUE(sheet().ApplyButton().isEnabled());
  sheet().reject();
  EXPECT_FALSE(sheet().isVisible());
}

TEST_F(TwoPageSheet, AnEditTakenBackNeedsNoQuestion) {
  first.dialog().SetPageModified(true);
  EXPECT_TRUE(sheet().HasUnsavedEdits());
  first.dialog().SetPageModified(false);
  EXPECT_FALSE(sheet().HasUnsavedEdits());
  sheet().reject();
  EXPECT_FALSE(sheet().isVisible());
}

TEST_F(TwoPageSheet, NothingClosesTheSheetWhileAPageApplies) {
  first.on_apply = [this] {
    sheet().reject();
    sheet().accept();
    EXPECT_FALSE(sheet().close());
    EXPECT_TRUE(sheet().isVisible());
  };
  first.dialog().SetPageModified(true);
  sheet().ApplyButton().click();
  EXPECT_TRUE(sheet().isVisible());
  EXPECT_THAT(first.told, ElementsAre(PageNotification::kApply));
}

TEST_F(TwoPageSheet, TellsWhoeverWaitsAfterEveryApply) {
  int applies = 0;
  sheet().machine().on_applied = [&applies] { ++applies; };
  first.dialog().SetPageModified(true);
  sheet().ApplyButton().click();
  EXPECT_EQ(applies, 1);
  second.apply_answer = kPageInvalidStay;
  sheet().accept();
  EXPECT_EQ(applies, 2);
}

TEST_F(TwoPageSheet, TakesNoPageOnceStartedAndNoneWithoutATemplate) {
  Controller third;
  EXPECT_FALSE(Add(third, "Late"));
  QtPropertySheet fresh(module(), QStringLiteral("Fresh"));
  constexpr DialogId kNoTemplate = 9999;
  EXPECT_FALSE(fresh.AddPage(std::make_unique<Page>(third, kNoTemplate, "None")));
  EXPECT_EQ(fresh.PageCount(), 0U);
}

TEST_F(TwoPageSheet, ATabShowsItsTitleAsItIs) {
  const QTabWidget* tabs = sheet().findChild<QTabWidget*>();
  EXPECT_EQ(console::WithoutMnemonic(tabs->tabText(0)), QStringLiteral("One & two"));
}

}  // namespace
}  // namespace pelora::test
