// SPDX-License-Identifier: Apache-2.0
// The pages of our own behind the extension's: General and Account.
#include "tests/ui/own_pages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLineEdit>
#include <QPlainTextEdit>

#include "hosts/console/text/qt_text.h"
#include "hosts/ldap/ads_path.h"
#include "hosts/session/own_pages/account_time.h"
#include "hosts/session/own_pages/own_page_ids.h"
#include "resources/resource.h"

namespace pelora::test {
namespace {

using console::ToUtf8;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// Cannot log on.
constexpr const char* kGuest = "CN=Gast,CN=Users,DC=linden-werke,DC=example";

TEST_F(OwnPages, StandBehindTheOthersAndAreReadWithThem) {
  OpenSheet& open = Open({kBirgit}, "General");
  EXPECT_THAT(Tabs(), ElementsAre("Pelora", "Pelora Features", "General", "Account", "Member Of"));
  open.sheet().SelectPage(3);
  EXPECT_EQ(std::ranges::count(store().log, std::string("read ") + kBirgit), 1)
      << "once for all pages";
  (void)Open({kContact}, "General");
  EXPECT_THAT(Tabs(), ElementsAre("Pelora", "General", "Member Of"));
  (void)Open({kGroup}, "General");
  EXPECT_THAT(Tabs(), ElementsAre("Pelora", "General", "Members", "Member Of"));
  (void)Open({kServer}, "Member Of");
  EXPECT_THAT(Tabs(), ElementsAre("Pelora", "Member Of"));
}

// What the opening of a sheet takes does not grow with the pages that nobody looks at.
TEST_F(OwnPages, CostTheOpeningOfASheetNoQuestionAndNoWidget) {
  const auto is_made = [](const OpenSheet& open, std::size_t page) {
    const auto& tabs = *open.sheet().findChild<QTabWidget*>();
    return open.sheet().Dialog(page) != nullptr ||
           tabs.widget(static_cast<int>(page))->findChild<QLineEdit*>() != nullptr;
  };
  // The root is known to whoever has a connection.
  const auto asked_of_objects = [this] {
    Lines asked = store().log;
    std::erase(asked, "read root");
    return asked;
  };
  OpenSheet& open = Open({kBirgit}, "Pelora");
  const Lines asked = {std::string("read ") + kBirgit};
  EXPECT_EQ(asked_of_objects(), asked);
  ASSERT_EQ(open.sheet().PageCount(), 5U);
  EXPECT_TRUE(is_made(open, 0));
  for (std::size_t page = 1; page < 4; ++page) EXPECT_FALSE(is_made(open, page)) << page;
  for (std::size_t page = 1; page < 4; ++page) open.sheet().SelectPage(page);
  EXPECT_TRUE(is_made(open, 2));
  EXPECT_EQ(asked_of_objects(), asked) << "what they show was read with the rest";
  store().log.clear();
  (void)Open({kBirgit, kRolf}, "Pelora");
  EXPECT_EQ(asked_of_objects(), Lines{std::string("read ") + kBirgit + " and 1 more"});
}

TEST_F(OwnPages, APersonsNamesOfficeAndNotesAreShownAndChanged) {
  const EntryLines before = Entry(kBirgit);
  OpenSheet& open = Open({kBirgit}, "General");
  EXPECT_EQ(Page().Text(IDC_OWN_FIRST_NAME), "Birgit");
  EXPECT_EQ(Page().Text(IDC_OWN_LAST_NAME), "Krämer");
  EXPECT_EQ(Page().Text(IDC_OWN_DISPLAY_NAME), "Birgit Krämer");
  EXPECT_FALSE(open.IsApplyEnabled());
  Keep("own-general");
  open.user().Type(IDC_OWN_OFFICE, "B 2.14");
  open.user().Erase(IDC_OWN_DISPLAY_NAME);
  open.user().Type(IDC_OWN_DISPLAY_NAME, "Krämer, Birgit");
  Control<QPlainTextEdit>(IDC_OWN_NOTES).setPlainText(QStringLiteral("mornings only\nask first"));
  open.ClickApply();
  EXPECT_THAT(Difference(before, Entry(kBirgit)),
              ::testing::UnorderedElementsAre(
                  "- displayName: Birgit Krämer", "+ displayName: Krämer, Birgit",
                  "+ physicalDeliveryOfficeName: B 2.14", "+ info: mornings only\r\nask first"));
  EXPECT_FALSE(open.IsApplyEnabled());
  open.user().Erase(IDC_OWN_OFFICE);
  open.ClickApply();
  EXPECT_THAT(Entry(kBirgit), Not(::testing::Contains(HasSubstr("physicalDelivery"))));
}

TEST_F(OwnPages, SeveralPeopleKeepTheirNamesAndGetWhatIsTyped) {
  const EntryLines birgit = Entry(kBirgit);
  const EntryLines juergen = Entry(kJuergen);
  OpenSheet& open = Open({kBirgit, kJuergen}, "General");
  EXPECT_EQ(Page().Find(IDC_OWN_FIRST_NAME), nullptr);
  EXPECT_THAT(Hint(IDC_OWN_TELEPHONE), HasSubstr("different: "));
  open.user().Type(IDC_OWN_OFFICE, "Haus 3");
  open.ClickApply();
  EXPECT_THAT(Difference(birgit, Entry(kBirgit)),
              ElementsAre("+ physicalDeliveryOfficeName: Haus 3"));
  EXPECT_THAT(Difference(juergen, Entry(kJuergen)),
              ElementsAre("+ physicalDeliveryOfficeName: Haus 3"));
}

TEST_F(OwnPages, AGroupHasSomebodyWhoLooksAfterIt) {
  const EntryLines before = Entry(kGroup);
  OpenSheet& open = Open({kGroup}, "General");
  open.choosers().Choose({ldap::AdsPathOf(kAnna)});
  open.user().Click(IDC_OWN_MANAGER_SELECT);
  EXPECT_EQ(Page().Text(IDC_OWN_MANAGER), kAnna);
  EXPECT_EQ(open.choosers().pickers().at(0).init.options, 0U) << "one alone";
  Keep("own-group");
  open.ClickApply();
  EXPECT_THAT(Difference(before, Entry(kGroup)), ElementsAre(std::string("+ managedBy: ") + kAnna));
  open.user().Click(IDC_OWN_MANAGER_CLEAR);
  open.ClickApply();
  EXPECT_THAT(Difference(before, Entry(kGroup)), IsEmpty());
}

TEST_F(OwnPages, AnEditOfOneBitLeavesTheOthers) {
  const EntryLines before = Entry(kBirgit);
  OpenSheet& open = Open({kBirgit}, "Account");
  EXPECT_EQ(Page().Check(IDC_OWN_ENABLED), CheckState::kChecked);
  Keep("own-account");
  open.user().Click(IDC_OWN_NEVER_EXPIRES);
  open.ClickApply();
  EXPECT_THAT(Difference(before, Entry(kBirgit)),
              ElementsAre("- userAccountControl: 512", "+ userAccountControl: 66048"));
  open.user().Click(IDC_OWN_ENABLED);
  open.user().Click(IDC_OWN_NEVER_EXPIRES);
  open.ClickApply();
  EXPECT_THAT(Difference(before, Entry(kBirgit)),
              ElementsAre("- userAccountControl: 512", "+ userAccountControl: 514"));
}

TEST_F(OwnPages, AnUndecidedBoxLeavesEachItsOwn) {
  OpenSheet& open = Open({kBirgit, kGuest}, "Account");
  EXPECT_EQ(Page().Check(IDC_OWN_ENABLED), CheckState::kIndeterminate);
  EXPECT_EQ(Page().Check(IDC_OWN_NEVER_EXPIRES), CheckState::kUnchecked);
  open.user().Click(IDC_OWN_NEVER_EXPIRES);
  open.ClickApply();
  EXPECT_THAT(Entry(kBirgit), ::testing::Contains("userAccountControl: 66048"));
  EXPECT_THAT(Entry(kGuest), ::testing::Contains("userAccountControl: 66050"));
  open.user().Click(IDC_OWN_ENABLED);
  open.ClickApply();
  EXPECT_THAT(Entry(kBirgit), ::testing::Contains("userAccountControl: 66048"));
  EXPECT_THAT(Entry(kGuest), ::testing::Contains("userAccountControl: 66048"));
}

TEST_F(OwnPages, AnAccountEndsWithItsLastDay) {
  OpenSheet& open = Open({kBirgit}, "Account");
  EXPECT_EQ(Page().Text(IDC_OWN_LAST_DAY), "");
  open.user().Type(IDC_OWN_LAST_DAY, "2031-02-29");
  EXPECT_THAT(open.Said(), HasSubstr("no day"));
  EXPECT_FALSE(open.IsApplyEnabled());
  open.user().Erase(IDC_OWN_LAST_DAY);
  open.user().Type(IDC_OWN_LAST_DAY, "2001-12-31");
  EXPECT_THAT(open.Said(), HasSubstr("over"));
  open.user().Erase(IDC_OWN_LAST_DAY);
  open.user().Type(IDC_OWN_LAST_DAY, "2131-12-31");
  EXPECT_EQ(open.Said(), "");
  open.ClickApply();
  const std::string end = std::to_string(session::EndOfLastDay("2131-12-31").value());
  EXPECT_THAT(Entry(kBirgit), ::testing::Contains("accountExpires: " + end));
  (void)Open({kBirgit}, "Account");
  EXPECT_EQ(Page().Text(IDC_OWN_LAST_DAY), "2131-12-31");
}

TEST_F(OwnPages, WhatADirectoryDoesNotHaveCannotBeUsedAndSaysSo) {
  (void)Open({kBirgit}, "Account");
  for (const ControlId id : {IDC_OWN_LOCKED, IDC_OWN_MUST_CHANGE}) {
    const auto& box = Control<QCheckBox>(id);
    EXPECT_FALSE(box.isEnabled()) << id;
    EXPECT_THAT(ToUtf8(box.toolTip()), HasSubstr("does not have")) << id;
  }
  EXPECT_TRUE(Control<QCheckBox>(IDC_OWN_ENABLED).isEnabled());
}

TEST_F(OwnPages, AnEditThatSomebodyElseMadeMeanwhileIsNotOverwritten) {
  OpenSheet& open = Open({kBirgit}, "Account");
  ModifyEntry(file(), std::string("dn: ") + kBirgit +
                          "\nchangetype: modify\nreplace: userAccountControl\n"
                          "userAccountControl: 514\n");
  open.user().Click(IDC_OWN_NEVER_EXPIRES);
  ShownBox box;
  modal_scripts().Add(Confirm(box));
  open.ClickApply();
  EXPECT_THAT(box.text, HasSubstr("Account was 512")) << "what the number is called";
  EXPECT_THAT(Entry(kBirgit), ::testing::Contains("userAccountControl: 514"));
}

}  // namespace
}  // namespace pelora::test
