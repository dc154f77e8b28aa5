// SPDX-License-Identifier: Apache-2.0
// The features tab in the console's sheet, besides what every console has in common.
#include "tests/ui/features_sheet.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>
#include <QTabWidget>
#include <QTest>
#include <QTextDocument>

#include "platform/dialog_controller.h"

namespace pelora::test {
namespace {

using ::testing::HasSubstr;
using Lines = std::vector<std::string>;

TEST_F(FeaturesSheet, StandsBehindTheUserTabAndListsTheFeatures) {
  const OpenSheet& open = Open({kHelga, kTom});
  ASSERT_EQ(open.sheet().PageCount(), 4U);
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

TEST_F(FeaturesSheet, TheDialogOfTheArchiveServersStandsOverTheSheet) {
  OpenSheet& open = Open({kJuergen});
  ClickRow(kArchiverRow);
  modal_scripts().Add([&open](QWidget& window) {
    contract::QtPlayer user(window);
    EXPECT_EQ(window.windowTitle().toStdString(), "Archive Servers");
    EXPECT_EQ(window.parentWidget(), &open.sheet()) << "its owner";
    user.Type(IDC_ARCHIVER_NAME, "archive03");
    user.Click(IDC_ARCHIVER_ADD);
    Keep(window, "archive-servers");
    EXPECT_EQ(FaultsOfSight(*window.findChild<QLineEdit*>()->parentWidget()), Lines());
    user.Click(kDialogOk);
  });
  open.user().Click(IDC_FEATURE_PROPERTIES);
  QTextDocument tool_tip;
  tool_tip.setHtml(View().topLevelItem(0)->toolTip(1));
  EXPECT_EQ(tool_tip.toPlainText().toStdString(),
            "Enabled on servers 'archive01', 'archive02', 'archive03'")
      << "a text that its column cuts short stands whole somewhere";
}

TEST_F(FeaturesSheet, TheQuestionAndTheDialogAfterItBelongToTheSheet) {
  const OpenSheet& open = Open({kJuergen, kTom});
  const auto answer = [&](const char* button) {
    return [&, button, press = Press(button)](QWidget& window) {
      EXPECT_EQ(window.parentWidget(), &open.sheet()) << button;
      press(window);
    };
  };
  for (const bool agrees : {false, true}) {
    open.sheet().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&open.sheet()));
    modal_scripts().Add(answer(agrees ? "&Yes" : "&No"));
    if (agrees) {
      modal_scripts().Add([&](QWidget& window) {
        EXPECT_EQ(window.parentWidget(), &open.sheet()) << "its owner, not the question's window";
        contract::QtPlayer(window).Click(kDialogOk);
      });
    }
    DoubleClickRow(kArchiverRow);
  }
}

TEST_F(FeaturesSheet, ACommitThatFailsNamesTheUserAndTheFeature) {
  OpenSheet& open = Open({kHelga, kTom});
  ClickRow(kImapRow);
  open.user().Click(IDC_FEATURE_DISABLE);
  store().FailChange(2, {50, "no right to do that"});
  ShownBox box;
  modal_scripts().Add(Confirm(box));
  open.ClickApply();
  EXPECT_THAT(box.text, HasSubstr(std::string("\nObject: ") + kTom + "\nFields: imap\n"));
}

}  // namespace
}  // namespace pelora::test
