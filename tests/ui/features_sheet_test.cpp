// SPDX-License-Identifier: Apache-2.0
// The features tab in its sheet, from the click to the directory file.
#include "tests/ui/features_sheet.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QHeaderView>
#include <QLineEdit>
#include <QListWidget>
#include <QScrollBar>
#include <QTabWidget>
#include <QTest>
#include <QTextDocument>
#include <algorithm>
#include <array>

#include "hosts/console/text/qt_text.h"
#include "hosts/ldap/ads_path.h"

namespace pelora::test {
namespace {

using pelora::testing::FaultPoint;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using Lines = std::vector<std::string>;

constexpr const char* kServer = "CN=mail01,OU=Groupware Servers,DC=linden-werke,DC=example";

TEST_F(FeaturesSheet, StandsBehindTheUserTabAndListsTheFeatures) {
  const OpenSheet& open = Open({kHelga, kTom});
  ASSERT_EQ(open.sheet().PageCount(), 2U);
  const auto* tabs = open.sheet().findChild<QTabWidget*>();
  EXPECT_EQ(tabs->tabText(0).toStdString(), "Pelora");
  EXPECT_EQ(tabs->tabText(1).toStdString(), "Pelora Features");
  EXPECT_EQ(Rows(), (Lines{"archiver: Disabled", "imap: Enabled", "pop3: Ambiguous"}));
  EXPECT_EQ(Buttons(), "none");
  EXPECT_FALSE(open.IsApplyEnabled());
  const QHeaderView& head = *View().header();
  EXPECT_EQ(head.sectionSize(0), View().contentsRect().width() / 2);
  EXPECT_EQ(head.sectionSize(1), head.sectionSize(0));
  EXPECT_FALSE(View().horizontalScrollBar()->isVisible());
  EXPECT_FALSE(View().verticalScrollBar()->isVisible());
  EXPECT_EQ(FaultsOfSight(Dialog().widget()), Lines());
}

TEST_F(FeaturesSheet, EnableAndDisableWriteBothListsOfEveryUser) {
  const EntryLines helga = Entry(kHelga);
  const EntryLines tom = Entry(kTom);
  OpenSheet& open = Open({kHelga, kTom});
  ClickRow(kPop3Row);
  EXPECT_EQ(Buttons(), "Enable Disable");
  open.user().Click(IDC_FEATURE_ENABLE);
  EXPECT_EQ(Rows()[kPop3Row], "pop3: Enabled");
  EXPECT_EQ(Buttons(), "Disable");
  EXPECT_TRUE(open.IsApplyEnabled());
  ClickRow(kImapRow);
  open.user().Click(IDC_FEATURE_DISABLE);
  open.ClickApply();
  EXPECT_FALSE(open.IsApplyEnabled());
  EXPECT_EQ(Difference(helga, Entry(kHelga)),
            (Lines{"- peloraEnabledFeatures: imap", "+ peloraDisabledFeatures: imap"}));
  EXPECT_EQ(Difference(tom, Entry(kTom)),
            (Lines{"- peloraDisabledFeatures: pop3", "- peloraEnabledFeatures: imap",
                   "+ peloraDisabledFeatures: imap", "+ peloraEnabledFeatures: pop3"}));
}

TEST_F(FeaturesSheet, ADoubleClickIsWrittenThoughThePageIsNotModified) {
  const EntryLines before = Entry(kTom);
  OpenSheet& open = Open({kTom});
  DoubleClickRow(kPop3Row);
  EXPECT_EQ(Rows()[kPop3Row], "pop3: Enabled");
  EXPECT_FALSE(open.IsApplyEnabled());
  open.ClickOk();
  EXPECT_FALSE(open.IsOpen());
  EXPECT_EQ(Difference(before, Entry(kTom)),
            (Lines{"- peloraDisabledFeatures: pop3", "+ peloraEnabledFeatures: pop3"}));
}

TEST_F(FeaturesSheet, ArchiveServersAreEditedInTheirDialog) {
  const EntryLines before = Entry(kJuergen);
  OpenSheet& open = Open({kJuergen});
  EXPECT_EQ(Rows()[kArchiverRow], "archiver: Enabled on servers 'archive01', 'archive02'");
  ClickRow(kArchiverRow);
  EXPECT_EQ(Buttons(), "Properties");
  modal_scripts().Add([&open](QWidget& window) {
    contract::QtPlayer user(window);
    EXPECT_EQ(window.windowTitle().toStdString(), "Archive Servers");
    EXPECT_EQ(window.parentWidget(), &open.sheet()) << "its owner";
    user.ClickListRow(IDC_ARCHIVER_LIST, 0);
    user.Click(IDC_ARCHIVER_REMOVE);
    user.Erase(IDC_ARCHIVER_NAME);
    user.Type(IDC_ARCHIVER_NAME, "archive03");
    user.Click(IDC_ARCHIVER_ADD);
    Keep(window, "archive-servers");
    auto* name = window.findChild<QLineEdit*>();
    EXPECT_EQ(FaultsOfSight(*name->parentWidget()), Lines());
    open.choosers().Choose(Lines{ldap::AdsPathOf(kServer)});
    user.Click(IDC_ARCHIVER_SEARCH);
    EXPECT_EQ(name->text().toStdString(), "mail01");
    user.Click(1);
  });
  open.user().Click(IDC_FEATURE_PROPERTIES);
  EXPECT_EQ(Rows()[kArchiverRow], "archiver: Enabled on servers 'archive02', 'archive03'");
  QTextDocument tool_tip;
  tool_tip.setHtml(View().topLevelItem(0)->toolTip(1));
  EXPECT_EQ(tool_tip.toPlainText().toStdString(), "Enabled on servers 'archive02', 'archive03'")
      << "a text that its column cuts short stands whole somewhere";
  EXPECT_FALSE(open.IsApplyEnabled());
  open.ClickOk();
  EXPECT_EQ(Difference(before, Entry(kJuergen)), (Lines{"- peloraUserArchiveServers: archive01",
                                                        "+ peloraUserArchiveServers: archive03"}));
}

TEST_F(FeaturesSheet, UsersThatDisagreeAreReplacedAfterAQuestion) {
  const std::string longest(62, 'x');
  const OpenSheet& open = Open({kJuergen, kTom});
  ASSERT_TRUE(QTest::qWaitForWindowActive(&open.sheet()));
  EXPECT_EQ(Rows()[kArchiverRow], "archiver: Ambiguous");
  ShownBox box;
  const auto answer = [&](const char* button) {
    return [&, button, press = Press(button)](QWidget& window) {
      const auto* shown = qobject_cast<QMessageBox*>(&window);
      ASSERT_NE(shown, nullptr);
      EXPECT_EQ(shown->parentWidget(), &open.sheet()) << button;
      box = {.caption = console::ToUtf8(shown->windowTitle()),
             .text = console::ToUtf8(shown->text()),
             .icon = shown->icon()};
      press(window);
    };
  };
  modal_scripts().Add(answer("&No"));
  DoubleClickRow(kArchiverRow);
  EXPECT_EQ(box.caption, "Warning");
  EXPECT_EQ(box.text,
            "This will clear the settings for all selected objects. Do you wish to continue?");
  open.sheet().activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&open.sheet()));
  modal_scripts().Add(answer("&Yes"));
  modal_scripts().Add([&](QWidget& window) {
    contract::QtPlayer user(window);
    EXPECT_EQ(window.parentWidget(), &open.sheet()) << "its owner, not the question's window";
    EXPECT_EQ(window.findChild<QListWidget*>()->count(), 0);
    // Its last character would have to be cut in two.
    user.Type(IDC_ARCHIVER_NAME, longest + "🖥");
    user.Click(IDC_ARCHIVER_ADD);
    user.Click(1);
  });
  DoubleClickRow(kArchiverRow);
  EXPECT_EQ(Rows()[kArchiverRow], "archiver: Enabled on server '" + longest + "'");
}

TEST_F(FeaturesSheet, AFailureOnTheSecondUserIsReportedAndTheRetrySucceeds) {
  const EntryLines helga = Entry(kHelga);
  OpenSheet& open = Open({kHelga, kTom});
  ClickRow(kImapRow);
  open.user().Click(IDC_FEATURE_DISABLE);
  plan().FailAttribute(FaultPoint::kPut, "peloraEnabledFeatures", 1, E_ACCESSDENIED);
  ShownBox box;
  modal_scripts().Add(Confirm(box));
  open.ClickApply();
  EXPECT_EQ(box.text, "Failed to update object: \n\nError code: 0X80070005");
  EXPECT_TRUE(open.IsOpen());
  EXPECT_TRUE(open.IsApplyEnabled());
  EXPECT_EQ(Difference(helga, Entry(kHelga)), Lines{});
  EXPECT_EQ(Rows()[kImapRow], "imap: Disabled");
  open.ClickApply();
  EXPECT_FALSE(open.IsApplyEnabled());
  EXPECT_EQ(Difference(helga, Entry(kHelga)),
            (Lines{"- peloraEnabledFeatures: imap", "+ peloraDisabledFeatures: imap"}));
}

TEST_F(FeaturesSheet, ACommitThatFailsOnTheSecondOfThreeUsersIsDoneByTheRetry) {
  const std::array users = {kHelga, kTom, kJuergen};
  std::array<EntryLines, 3> before;
  std::ranges::transform(users, before.begin(), [this](const char* dn) { return Entry(dn); });
  const auto written = [&](std::size_t user) {
    return Difference(before.at(user), Entry(users.at(user)));
  };
  const Lines disabled = {"- peloraEnabledFeatures: imap", "+ peloraDisabledFeatures: imap"};
  OpenSheet& open = Open({users.begin(), users.end()});
  ClickRow(kImapRow);
  open.user().Click(IDC_FEATURE_DISABLE);
  // The tab before this one has nothing to write.
  store().FailChange(2, {50, "no right to do that"});
  ShownBox box;
  modal_scripts().Add(Confirm(box));
  open.ClickApply();
  EXPECT_THAT(box.text, StartsWith("Unknown error occured\n\nError code: 0X80070005\n"));
  EXPECT_THAT(box.text, HasSubstr(std::string("\nObject: ") + kTom + "\nFields: imap\n"));
  EXPECT_TRUE(open.IsApplyEnabled());
  EXPECT_EQ(written(0), disabled);
  EXPECT_EQ(written(1), Lines{});
  EXPECT_EQ(written(2), Lines{});
  open.ClickApply();
  EXPECT_FALSE(open.IsApplyEnabled());
  for (std::size_t user = 0; user < users.size(); ++user)
    EXPECT_EQ(written(user), disabled) << user;
}

}  // namespace
}  // namespace pelora::test
