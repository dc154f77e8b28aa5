// SPDX-License-Identifier: Apache-2.0
#include "tests/contract/property_sheet_contract.h"

#include <gmock/gmock.h>

#include "tests/contract/recorded_pages.h"

namespace pelora::contract {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Two pages of the contract's templates, in a sheet that is not shown yet.
class TwoPages {
 public:
  explicit TwoPages(PropertySheetDriver& sheet) {
    EXPECT_TRUE(sheet.AddPage(std::make_unique<RecordedPage>(first, IDD_CONTRACT_PAGE, "")));
    EXPECT_TRUE(
        sheet.AddPage(std::make_unique<RecordedPage>(second, IDD_CONTRACT_SECOND_PAGE, "Titled")));
  }

  PageRecord first;
  PageRecord second;
};

TEST_P(PropertySheetContract, ATabHasItsPagesTitleOrTheTemplatesCaption) {
  TwoPages pages(Sheet());
  Sheet().Show();
  EXPECT_EQ(Sheet().TabText(0), "First page");
  EXPECT_EQ(Sheet().TabText(1), "Titled");
  DestroySheet();
}

TEST_P(PropertySheetContract, APagesDialogIsMadeWhenThePageIsFirstShown) {
  TwoPages pages(Sheet());
  EXPECT_THAT(pages.first.controller.events(), IsEmpty());
  Sheet().Show();
  EXPECT_TRUE(Sheet().IsOpen());
  EXPECT_EQ(Sheet().CurrentPage(), 0U);
  EXPECT_THAT(pages.first.controller.TakeEvents(), ElementsAre("init", kSetActive));
  EXPECT_THAT(pages.second.controller.TakeEvents(), IsEmpty());
  Sheet().SelectPage(1);
  EXPECT_EQ(Sheet().CurrentPage(), 1U);
  EXPECT_THAT(pages.first.controller.TakeEvents(), ElementsAre(kKillActive));
  EXPECT_THAT(pages.second.controller.TakeEvents(), ElementsAre("init", kSetActive));
  Sheet().SelectPage(0);
  EXPECT_THAT(pages.first.controller.TakeEvents(), ElementsAre(kSetActive));
  EXPECT_THAT(pages.second.controller.TakeEvents(), ElementsAre(kKillActive));
  DestroySheet();
}

TEST_P(PropertySheetContract, APageMayRefuseToBeLeft) {
  TwoPages pages(Sheet());
  pages.first.controller.on_page = Answer(PageNotification::kKillActive, 1);
  Sheet().Show();
  Sheet().SelectPage(1);
  EXPECT_EQ(Sheet().CurrentPage(), 0U);
  EXPECT_THAT(pages.first.controller.events(), ElementsAre("init", kSetActive, kKillActive));
  EXPECT_THAT(pages.second.controller.events(), IsEmpty());
  DestroySheet();
}

TEST_P(PropertySheetContract, ThePersonActsOnTheCurrentPage) {
  TwoPages pages(Sheet());
  Sheet().Show();
  Sheet().SelectPage(1);
  (void)pages.first.controller.TakeEvents();
  (void)pages.second.controller.TakeEvents();
  Sheet().User().Type(IDC_CONTRACT_EDIT, "x");
  EXPECT_THAT(pages.second.controller.events(), ElementsAre("edited 1003"));
  EXPECT_THAT(pages.first.controller.events(), IsEmpty());
  DestroySheet();
}

TEST_P(PropertySheetContract, ApplyIsEnabledWhileAPageHasChanges) {
  TwoPages pages(Sheet());
  Sheet().Show();
  Sheet().SelectPage(1);
  EXPECT_FALSE(Sheet().IsApplyEnabled());
  IDialog& first = *pages.first.controller.dialog();
  IDialog& second = *pages.second.controller.dialog();
  first.SetPageModified(true);
  EXPECT_TRUE(Sheet().IsApplyEnabled());
  second.SetPageModified(true);
  first.SetPageModified(false);
  EXPECT_TRUE(Sheet().IsApplyEnabled());
  second.SetPageModified(false);
  EXPECT_FALSE(Sheet().IsApplyEnabled());
  DestroySheet();
}

// Wine's sheet forgets what its first page says while the sheet itself is being made.
#if !defined(_WIN32)
TEST_P(PropertySheetContract, APageMayHaveChangesFromTheBeginning) {
  TwoPages pages(Sheet());
  pages.first.controller.on_init = [](IDialog& dialog) { dialog.SetPageModified(true); };
  Sheet().Show();
  EXPECT_TRUE(Sheet().IsApplyEnabled());
  DestroySheet();
}
#endif

TEST_P(PropertySheetContract, ADisabledApplyButtonDoesNothing) {
  TwoPages pages(Sheet());
  Sheet().Show();
  (void)pages.first.controller.TakeEvents();
  Sheet().ClickApply();
  EXPECT_THAT(pages.first.controller.events(), IsEmpty());
  DestroySheet();
}

TEST_P(PropertySheetContract, ApplyAsksEveryPageThatWasShown) {
  TwoPages pages(Sheet());
  Sheet().Show();
  Sheet().SelectPage(1);
  pages.first.controller.dialog()->SetPageModified(true);
  (void)pages.first.controller.TakeEvents();
  (void)pages.second.controller.TakeEvents();
  Sheet().ClickApply();
  EXPECT_THAT(pages.first.controller.events(), ElementsAre(kApply));
  EXPECT_THAT(pages.second.controller.events(), ElementsAre(kKillActive, kApply, kSetActive));
  EXPECT_TRUE(Sheet().IsOpen());
  EXPECT_FALSE(Sheet().IsApplyEnabled());
  DestroySheet();
}

TEST_P(PropertySheetContract, ApplyPassesOverPagesNeverShown) {
  TwoPages pages(Sheet());
  Sheet().Show();
  pages.first.controller.dialog()->SetPageModified(true);
  Sheet().ClickApply();
  EXPECT_THAT(pages.first.controller.events(),
              ElementsAre("init", kSetActive, kKillActive, kApply, kSetActive));
  EXPECT_THAT(pages.second.controller.events(), IsEmpty());
  DestroySheet();
}

TEST_P(PropertySheetContract, AFailedApplyKeepsTheSheetOnThePageAndAsksNoOther) {
  TwoPages pages(Sheet());
  pages.first.controller.on_page = Answer(PageNotification::kApply, kPageInvalidStay);
  Sheet().Show();
  Sheet().SelectPage(1);
  Sheet().SelectPage(0);
  pages.first.controller.dialog()->SetPageModified(true);
  (void)pages.first.controller.TakeEvents();
  (void)pages.second.controller.TakeEvents();
  Sheet().ClickApply();
  EXPECT_TRUE(Sheet().IsOpen());
  EXPECT_EQ(Sheet().CurrentPage(), 0U);
  EXPECT_TRUE(Sheet().IsApplyEnabled());
  EXPECT_THAT(pages.first.controller.events(), ElementsAre(kKillActive, kApply));
  EXPECT_THAT(pages.second.controller.events(), IsEmpty());
  DestroySheet();
}

TEST_P(PropertySheetContract, APageThatMayNotBeLeftIsNotApplied) {
  TwoPages pages(Sheet());
  pages.first.controller.on_page = Answer(PageNotification::kKillActive, 1);
  Sheet().Show();
  pages.first.controller.dialog()->SetPageModified(true);
  Sheet().ClickApply();
  Sheet().ClickOk();
  EXPECT_TRUE(Sheet().IsOpen());
  EXPECT_TRUE(Sheet().IsApplyEnabled());
  EXPECT_THAT(pages.first.controller.events(),
              ElementsAre("init", kSetActive, kKillActive, kKillActive));
  DestroySheet();
}

TEST_P(PropertySheetContract, OkAppliesAndClosesWithAndWithoutChanges) {
  TwoPages pages(Sheet());
  Sheet().Show();
  Sheet().SelectPage(1);
  (void)pages.first.controller.TakeEvents();
  (void)pages.second.controller.TakeEvents();
  Sheet().ClickOk();
  EXPECT_FALSE(Sheet().IsOpen());
  DestroySheet();
  EXPECT_THAT(pages.first.controller.events(), ElementsAre(kApply, "destroy"));
  EXPECT_THAT(pages.second.controller.events(), ElementsAre(kKillActive, kApply, "destroy"));
  EXPECT_TRUE(pages.first.destroyed);
  EXPECT_TRUE(pages.second.destroyed);
}

TEST_P(PropertySheetContract, AFailedOkKeepsTheSheetOpen) {
  TwoPages pages(Sheet());
  pages.first.controller.on_page = Answer(PageNotification::kApply, kPageInvalidStay);
  Sheet().Show();
  Sheet().ClickOk();
  EXPECT_TRUE(Sheet().IsOpen());
  EXPECT_FALSE(pages.first.destroyed);
  EXPECT_THAT(pages.first.controller.events(),
              ElementsAre("init", kSetActive, kKillActive, kApply));
  DestroySheet();
}

TEST_P(PropertySheetContract, CancelResetsThePagesThatWereShownAndCloses) {
  TwoPages pages(Sheet());
  Sheet().Show();
  pages.first.controller.dialog()->SetPageModified(true);
  (void)pages.first.controller.TakeEvents();
  Sheet().ClickCancel();
  EXPECT_FALSE(Sheet().IsOpen());
  DestroySheet();
  EXPECT_THAT(pages.first.controller.events(), ElementsAre(kQueryCancel, kReset, "destroy"));
  EXPECT_THAT(pages.second.controller.events(), IsEmpty());
  EXPECT_TRUE(pages.first.destroyed);
  EXPECT_TRUE(pages.second.destroyed);
}

TEST_P(PropertySheetContract, ThePageThatShowsMayPreventCancel) {
  TwoPages pages(Sheet());
  pages.first.controller.on_page = Answer(PageNotification::kQueryCancel, 1);
  Sheet().Show();
  Sheet().ClickCancel();
  EXPECT_TRUE(Sheet().IsOpen());
  EXPECT_THAT(pages.first.controller.events(), ElementsAre("init", kSetActive, kQueryCancel));
  DestroySheet();
}

TEST_P(PropertySheetContract, APageIsDestroyedAfterItsDialog) {
  TwoPages pages(Sheet());
  Sheet().Show();
  DestroySheet();
  EXPECT_THAT(pages.first.events_at_destruction, ElementsAre("init", kSetActive, "destroy"));
  EXPECT_TRUE(pages.second.destroyed);
  EXPECT_THAT(pages.second.controller.events(), IsEmpty());
}

TEST_P(PropertySheetContract, PagesOfASheetNeverShownAreDestroyedWithIt) {
  TwoPages pages(Sheet());
  DestroySheet();
  EXPECT_TRUE(pages.first.destroyed);
  EXPECT_TRUE(pages.second.destroyed);
  EXPECT_THAT(pages.first.controller.events(), IsEmpty());
}

}  // namespace
}  // namespace pelora::contract
