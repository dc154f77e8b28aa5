// SPDX-License-Identifier: Apache-2.0
// Pages that decline, fail and interfere, and what they say of their changes.
#include <gmock/gmock.h>

#include "tests/contract/property_sheet_contract.h"
#include "tests/contract/recorded_pages.h"

namespace pelora::contract {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A sheet of three pages that were all shown; the third shows.
struct AllShown : ThreePages {
  explicit AllShown(PropertySheetDriver& sheet) : ThreePages(sheet) {
    sheet.Show();
    sheet.SelectPage(1);
    sheet.SelectPage(2);
    Forget();
  }
};

TEST_P(PropertySheetContract, APageThatFailsAndWantsToBeShownIsShown) {
  AllShown pages(Sheet());
  pages.first.controller.on_page = Answer(PageNotification::kApply, kInvalidShow);
  Sheet().ClickOk();
  EXPECT_TRUE(Sheet().IsOpen());
  EXPECT_EQ(Sheet().CurrentPage(), 0U);
  EXPECT_THAT(pages.first.controller.events(), ElementsAre(kApply));
  EXPECT_THAT(pages.second.controller.events(), IsEmpty());
  EXPECT_THAT(pages.third.controller.TakeEvents(), ElementsAre(kKillActive));
  // It is the one that shows in every respect.
  Sheet().SelectPage(2);
  EXPECT_THAT(pages.first.controller.events(), ElementsAre(kApply, kKillActive));
  EXPECT_THAT(pages.third.controller.events(), ElementsAre(kSetActive));
  DestroySheet();
}

TEST_P(PropertySheetContract, APageThatFailsAndDoesNotWantToBeShownIsNot) {
  AllShown pages(Sheet());
  pages.first.controller.on_page = Answer(PageNotification::kApply, kPageInvalidStay);
  Sheet().ClickOk();
  EXPECT_TRUE(Sheet().IsOpen());
  EXPECT_EQ(Sheet().CurrentPage(), 2U);
  EXPECT_THAT(pages.first.controller.events(), ElementsAre(kApply));
  EXPECT_THAT(pages.second.controller.events(), IsEmpty());
  EXPECT_THAT(pages.third.controller.events(), ElementsAre(kKillActive));
  DestroySheet();
}

TEST_P(PropertySheetContract, APageThatFailsIsShownWithoutBeingActivated) {
  AllShown pages(Sheet());
  pages.third.controller.on_page = Answer(PageNotification::kApply, kInvalidShow);
  Sheet().ClickOk();
  EXPECT_EQ(Sheet().CurrentPage(), 2U);
  EXPECT_THAT(pages.first.controller.events(), ElementsAre(kApply));
  EXPECT_THAT(pages.third.controller.events(), ElementsAre(kKillActive, kApply));
  DestroySheet();
}

TEST_P(PropertySheetContract, PagesBeforeTheOneThatFailsHaveAppliedAndDoSoAgain) {
  AllShown pages(Sheet());
  pages.second.controller.on_page = Answer(PageNotification::kApply, kPageInvalidStay);
  Sheet().ClickOk();
  EXPECT_THAT(pages.first.controller.TakeEvents(), ElementsAre(kApply));
  EXPECT_THAT(pages.second.controller.TakeEvents(), ElementsAre(kApply));
  EXPECT_THAT(pages.third.controller.TakeEvents(), ElementsAre(kKillActive));
  pages.second.controller.on_page = nullptr;
  Sheet().ClickOk();
  EXPECT_FALSE(Sheet().IsOpen());
  DestroySheet();
  EXPECT_THAT(pages.first.controller.events(), ElementsAre(kApply, "destroy"));
  EXPECT_THAT(pages.second.controller.events(), ElementsAre(kApply, "destroy"));
  EXPECT_THAT(pages.third.controller.events(), ElementsAre(kKillActive, kApply, "destroy"));
}

TEST_P(PropertySheetContract, TheMarksStayUntilEveryPageHasApplied) {
  AllShown pages(Sheet());
  pages.first.controller.dialog()->SetPageModified(true);
  pages.second.controller.on_page = Answer(PageNotification::kApply, kPageInvalidStay);
  Sheet().ClickApply();
  EXPECT_TRUE(Sheet().IsApplyEnabled());
  pages.second.controller.on_page = nullptr;
  Sheet().ClickApply();
  EXPECT_FALSE(Sheet().IsApplyEnabled());
  DestroySheet();
}

TEST_P(PropertySheetContract, APageThatTakesItsMarkBackAndFailsLeavesApplyDisabled) {
  AllShown pages(Sheet());
  IDialog& first = *pages.first.controller.dialog();
  first.SetPageModified(true);
  pages.first.controller.on_page = [&first](PageNotification told) {
    if (told != PageNotification::kApply) return 0;
    first.SetPageModified(false);
    return kPageInvalidStay;
  };
  Sheet().ClickApply();
  EXPECT_FALSE(Sheet().IsApplyEnabled());
  DestroySheet();
}

TEST_P(PropertySheetContract, AMarkSetWhileApplyingDoesNotOutliveTheApply) {
  AllShown pages(Sheet());
  IDialog& first = *pages.first.controller.dialog();
  first.SetPageModified(true);
  pages.first.controller.on_page = [&first](PageNotification told) {
    if (told == PageNotification::kApply) first.SetPageModified(true);
    return 0;
  };
  Sheet().ClickApply();
  EXPECT_FALSE(Sheet().IsApplyEnabled());
  DestroySheet();
}

TEST_P(PropertySheetContract, APageThatDeclinesIsPassedOver) {
  ThreePages pages(Sheet());
  pages.second.controller.on_page = Answer(PageNotification::kSetActive, kDeclines);
  Sheet().Show();
  Sheet().SelectPage(1);
  EXPECT_EQ(Sheet().CurrentPage(), 2U);
  EXPECT_THAT(pages.first.controller.events(), ElementsAre("init", kSetActive, kKillActive));
  EXPECT_THAT(pages.second.controller.events(), ElementsAre("init", kSetActive));
  EXPECT_THAT(pages.third.controller.events(), ElementsAre("init", kSetActive));
  DestroySheet();
}

TEST_P(PropertySheetContract, AFirstPageThatDeclinesIsPassedOver) {
  ThreePages pages(Sheet());
  pages.first.controller.on_page = Answer(PageNotification::kSetActive, kDeclines);
  Sheet().Show();
  EXPECT_EQ(Sheet().CurrentPage(), 1U);
  EXPECT_THAT(pages.first.controller.events(), ElementsAre("init", kSetActive));
  EXPECT_THAT(pages.second.controller.events(), ElementsAre("init", kSetActive));
  EXPECT_THAT(pages.third.controller.events(), IsEmpty());
  DestroySheet();
}

TEST_P(PropertySheetContract, ALastPageThatDeclinesIsShownAllTheSame) {
  ThreePages pages(Sheet());
  pages.third.controller.on_page = Answer(PageNotification::kSetActive, kDeclines);
  Sheet().Show();
  Sheet().SelectPage(2);
  EXPECT_EQ(Sheet().CurrentPage(), 2U);
  EXPECT_THAT(pages.third.controller.events(), ElementsAre("init", kSetActive));
  DestroySheet();
}

TEST_P(PropertySheetContract, APageMayNameTheOneToShowInItsPlace) {
  ThreePages pages(Sheet());
  pages.third.controller.on_page = Answer(PageNotification::kSetActive, IDD_CONTRACT_SECOND_PAGE);
  Sheet().Show();
  Sheet().SelectPage(2);
  EXPECT_EQ(Sheet().CurrentPage(), 1U);
  EXPECT_THAT(pages.third.controller.events(), ElementsAre("init", kSetActive));
  EXPECT_THAT(pages.second.controller.events(), ElementsAre("init", kSetActive));
  DestroySheet();
}

TEST_P(PropertySheetContract, APageThatAFailureBringsUpHasNoSayInIt) {
  ThreePages pages(Sheet());
  Sheet().Show();
  Sheet().SelectPage(2);
  pages.Forget();
  pages.first.controller.on_page = [](PageNotification told) -> std::int32_t {
    if (told == PageNotification::kApply) return kInvalidShow;
    return told == PageNotification::kSetActive ? IDD_CONTRACT_SECOND_PAGE : 0;
  };
  Sheet().ClickOk();
  EXPECT_TRUE(Sheet().IsOpen());
  EXPECT_EQ(Sheet().CurrentPage(), 0U);
  EXPECT_THAT(pages.first.controller.events(), ElementsAre(kApply));
  EXPECT_THAT(pages.second.controller.events(), IsEmpty());
  DestroySheet();
}

TEST_P(PropertySheetContract, PagesNeverShownAreToldNothing) {
  ThreePages pages(Sheet());
  Sheet().Show();
  pages.first.controller.dialog()->SetPageModified(true);
  Sheet().ClickApply();
  Sheet().ClickOk();
  EXPECT_FALSE(Sheet().IsOpen());
  DestroySheet();
  EXPECT_THAT(pages.second.controller.events(), IsEmpty());
  EXPECT_THAT(pages.third.controller.events(), IsEmpty());
}

TEST_P(PropertySheetContract, OnlyThePageThatShowsIsAskedWhetherCancelIsAllRight) {
  AllShown pages(Sheet());
  pages.first.controller.on_page = Answer(PageNotification::kQueryCancel, 1);
  Sheet().ClickCancel();
  EXPECT_FALSE(Sheet().IsOpen());
  DestroySheet();
  EXPECT_THAT(pages.first.controller.events(), ElementsAre(kReset, "destroy"));
  EXPECT_THAT(pages.second.controller.events(), ElementsAre(kReset, "destroy"));
  EXPECT_THAT(pages.third.controller.events(), ElementsAre(kQueryCancel, kReset, "destroy"));
}

// The platform's own sheet leaves this to its pages: they must not.
#if !defined(_WIN32)
TEST_P(PropertySheetContract, NothingElseHappensWhileAPageIsToldSomething) {
  AllShown pages(Sheet());
  const auto interfere = [this](PageNotification /*told*/) {
    Sheet().ClickApply();
    Sheet().ClickOk();
    Sheet().ClickCancel();
    Sheet().SelectPage(0);
    EXPECT_TRUE(Sheet().IsOpen());
    return 0;
  };
  pages.third.controller.dialog()->SetPageModified(true);
  pages.third.controller.on_page = interfere;
  Sheet().ClickApply();
  EXPECT_EQ(Sheet().CurrentPage(), 2U);
  EXPECT_THAT(pages.first.controller.TakeEvents(), ElementsAre(kApply));
  EXPECT_THAT(pages.third.controller.TakeEvents(), ElementsAre(kKillActive, kApply, kSetActive));
  Sheet().SelectPage(0);
  EXPECT_EQ(Sheet().CurrentPage(), 0U);
  EXPECT_THAT(pages.third.controller.TakeEvents(), ElementsAre(kKillActive));
  pages.first.controller.on_page = interfere;
  (void)pages.first.controller.TakeEvents();
  Sheet().ClickCancel();
  EXPECT_FALSE(Sheet().IsOpen());
  DestroySheet();
  EXPECT_THAT(pages.first.controller.events(), ElementsAre(kQueryCancel, kReset, "destroy"));
}

TEST_P(PropertySheetContract, PagesThatNameEachOtherComeToAnEnd) {
  ThreePages pages(Sheet());
  Sheet().Show();
  pages.first.controller.on_page = Answer(PageNotification::kSetActive, IDD_CONTRACT_SECOND_PAGE);
  pages.second.controller.on_page = Answer(PageNotification::kSetActive, IDD_CONTRACT_PAGE);
  Sheet().SelectPage(1);
  EXPECT_TRUE(Sheet().IsOpen());
  EXPECT_LT(Sheet().CurrentPage(), 2U);
  DestroySheet();
}
#endif

}  // namespace
}  // namespace pelora::contract
