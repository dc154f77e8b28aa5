// SPDX-License-Identifier: Apache-2.0
#include "tests/contract/wizard_contract.h"

#include <gmock/gmock.h>

#include "tests/contract/recorded_pages.h"

namespace pelora::contract {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_P(WizardContract, APagesDialogIsMadeWhenThePageIsFirstShown) {
  ThreePages pages(Wizard());
  EXPECT_THAT(pages.first.controller.events(), IsEmpty());
  Wizard().Show();
  EXPECT_TRUE(Wizard().IsOpen());
  EXPECT_EQ(Wizard().CurrentPage(), 0U);
  EXPECT_THAT(pages.first.controller.events(), ElementsAre("init", kSetActive));
  EXPECT_THAT(pages.second.controller.events(), IsEmpty());
  DestroyWizard();
}

TEST_P(WizardContract, APageIsToldOfTheWayThenAskedWhetherItMayBeLeft) {
  ThreePages pages(Wizard());
  Wizard().Show();
  pages.Forget();
  Wizard().ClickNext();
  EXPECT_EQ(Wizard().CurrentPage(), 1U);
  EXPECT_THAT(pages.first.controller.TakeEvents(), ElementsAre(kWizardNext, kKillActive));
  EXPECT_THAT(pages.second.controller.TakeEvents(), ElementsAre("init", kSetActive));
  Wizard().ClickBack();
  EXPECT_EQ(Wizard().CurrentPage(), 0U);
  EXPECT_THAT(pages.second.controller.TakeEvents(), ElementsAre(kWizardBack, kKillActive));
  EXPECT_THAT(pages.first.controller.TakeEvents(), ElementsAre(kSetActive));
  Wizard().ClickNext();
  EXPECT_THAT(pages.second.controller.TakeEvents(), ElementsAre(kSetActive));
  DestroyWizard();
}

TEST_P(WizardContract, TheWizardsOwnLastPageFollowsAndLeadsBack) {
  ThreePages pages(Wizard());
  Wizard().Show();
  for (int click = 0; click < 3; ++click) Wizard().ClickNext();
  EXPECT_EQ(Wizard().CurrentPage(), 3U);
  pages.Forget();
  Wizard().ClickBack();
  EXPECT_EQ(Wizard().CurrentPage(), 2U);
  EXPECT_THAT(pages.third.controller.events(), ElementsAre(kSetActive));
  DestroyWizard();
}

TEST_P(WizardContract, APageMayDeclineToBeLeftThatWay) {
  ThreePages pages(Wizard());
  Wizard().Show();
  Wizard().ClickNext();
  pages.Forget();
  pages.second.controller.on_page = Answer(PageNotification::kWizardNext, kDeclines);
  Wizard().ClickNext();
  EXPECT_EQ(Wizard().CurrentPage(), 1U);
  EXPECT_THAT(pages.second.controller.TakeEvents(), ElementsAre(kWizardNext));
  EXPECT_THAT(pages.third.controller.TakeEvents(), IsEmpty());
  pages.second.controller.on_page = Answer(PageNotification::kWizardBack, kDeclines);
  Wizard().ClickBack();
  EXPECT_EQ(Wizard().CurrentPage(), 1U);
  EXPECT_THAT(pages.second.controller.TakeEvents(), ElementsAre(kWizardBack));
  EXPECT_THAT(pages.first.controller.TakeEvents(), IsEmpty());
  DestroyWizard();
}

TEST_P(WizardContract, APageMayRefuseToBeLeft) {
  ThreePages pages(Wizard());
  Wizard().Show();
  Wizard().ClickNext();
  pages.Forget();
  pages.second.controller.on_page = Answer(PageNotification::kKillActive, 1);
  Wizard().ClickNext();
  Wizard().ClickBack();
  EXPECT_EQ(Wizard().CurrentPage(), 1U);
  EXPECT_THAT(pages.second.controller.events(),
              ElementsAre(kWizardNext, kKillActive, kWizardBack, kKillActive));
  EXPECT_THAT(pages.first.controller.events(), IsEmpty());
  EXPECT_THAT(pages.third.controller.events(), IsEmpty());
  DestroyWizard();
}

TEST_P(WizardContract, APageMayNameTheOneToGoTo) {
  ThreePages pages(Wizard());
  Wizard().Show();
  Wizard().ClickNext();
  Wizard().ClickNext();
  pages.Forget();
  pages.third.controller.on_page = Answer(PageNotification::kWizardNext, IDD_CONTRACT_SECOND_PAGE);
  Wizard().ClickNext();
  EXPECT_EQ(Wizard().CurrentPage(), 1U);
  EXPECT_THAT(pages.third.controller.events(), ElementsAre(kWizardNext, kKillActive));
  EXPECT_THAT(pages.second.controller.events(), ElementsAre(kSetActive));
  DestroyWizard();
}

TEST_P(WizardContract, APageThatDeclinesIsPassedOverEitherWay) {
  ThreePages pages(Wizard());
  pages.second.controller.on_page = Answer(PageNotification::kSetActive, kDeclines);
  Wizard().Show();
  pages.Forget();
  Wizard().ClickNext();
  EXPECT_EQ(Wizard().CurrentPage(), 2U);
  EXPECT_THAT(pages.second.controller.TakeEvents(), ElementsAre("init", kSetActive));
  EXPECT_THAT(pages.third.controller.TakeEvents(), ElementsAre("init", kSetActive));
  pages.Forget();
  Wizard().ClickBack();
  EXPECT_EQ(Wizard().CurrentPage(), 0U);
  EXPECT_THAT(pages.third.controller.TakeEvents(), ElementsAre(kWizardBack, kKillActive));
  EXPECT_THAT(pages.second.controller.TakeEvents(), ElementsAre(kSetActive));
  EXPECT_THAT(pages.first.controller.TakeEvents(), ElementsAre(kSetActive));
  DestroyWizard();
}

TEST_P(WizardContract, CancelResetsThePagesThatWereShownAndCloses) {
  ThreePages pages(Wizard());
  Wizard().Show();
  Wizard().ClickNext();
  pages.Forget();
  Wizard().ClickCancel();
  EXPECT_FALSE(Wizard().IsOpen());
  DestroyWizard();
  EXPECT_THAT(pages.first.controller.events(), ElementsAre(kReset, "destroy"));
  EXPECT_THAT(pages.second.controller.events(), ElementsAre(kQueryCancel, kReset, "destroy"));
  EXPECT_THAT(pages.third.controller.events(), IsEmpty());
  EXPECT_TRUE(pages.first.destroyed);
  EXPECT_TRUE(pages.third.destroyed);
}

TEST_P(WizardContract, ThePageThatShowsMayPreventCancel) {
  ThreePages pages(Wizard());
  Wizard().Show();
  pages.Forget();
  pages.first.controller.on_page = Answer(PageNotification::kQueryCancel, 1);
  Wizard().ClickCancel();
  EXPECT_TRUE(Wizard().IsOpen());
  EXPECT_THAT(pages.first.controller.events(), ElementsAre(kQueryCancel));
  DestroyWizard();
}

TEST_P(WizardContract, TheHeadShowsThePagesOwnTitleOrTheTemplatesCaption) {
  ThreePages pages(Wizard());
  Wizard().Show();
  EXPECT_EQ(Wizard().Title(), "First page");
  Wizard().ClickNext();
  EXPECT_EQ(Wizard().Title(), "Titled");
  DestroyWizard();
}

TEST_P(WizardContract, APageIsDestroyedAfterItsDialog) {
  ThreePages pages(Wizard());
  Wizard().Show();
  DestroyWizard();
  EXPECT_THAT(pages.first.events_at_destruction, ElementsAre("init", kSetActive, "destroy"));
  EXPECT_TRUE(pages.second.destroyed);
  EXPECT_THAT(pages.second.controller.events(), IsEmpty());
}

// The platform's own wizard leaves this to its pages: they must not.
#if !defined(_WIN32)
TEST_P(WizardContract, NothingElseHappensWhileAPageIsToldSomething) {
  ThreePages pages(Wizard());
  Wizard().Show();
  Wizard().ClickNext();
  pages.Forget();
  pages.second.controller.on_page = [this](PageNotification /*told*/) {
    Wizard().ClickBack();
    Wizard().ClickNext();
    Wizard().ClickCancel();
    EXPECT_TRUE(Wizard().IsOpen());
    return 0;
  };
  Wizard().ClickNext();
  EXPECT_EQ(Wizard().CurrentPage(), 2U);
  EXPECT_THAT(pages.second.controller.events(), ElementsAre(kWizardNext, kKillActive));
  EXPECT_THAT(pages.third.controller.events(), ElementsAre("init", kSetActive));
  DestroyWizard();
}
#endif

}  // namespace
}  // namespace pelora::contract
