// SPDX-License-Identifier: Apache-2.0
// The features tab in the console's sheet, besides what every console has in common.
#include "tests/ui/features_sheet.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QTextDocument>

#include "hosts/console/writing/qt_writing_desk.h"
#include "platform/dialog_controller.h"
#include "tests/ui/keep_picture.h"

namespace pelora::test {
namespace {

using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::Not;
using Lines = std::vector<std::string>;

TEST_F(FeaturesSheet, StandsBehindTheUserTabAndListsTheFeatures) {
  const OpenSheet& open = Open({kHelga, kTom});
  ASSERT_EQ(open.sheet().PageCount(), 5U);
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
    KeepPicture(window, "archive-servers");
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
    contract::Activate(open.sheet());
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

/// Writes what is shown of two objects but for the second one.
contract::ModalScript LeaveOutTheSecond() {
  return [](QWidget& window) {
    auto* const table = window.findChild<QTableView*>(QStringLiteral("review_table"));
    ASSERT_NE(table, nullptr);
    QAbstractItemModel& model = *table->model();
    const QModelIndex last = model.index(model.rowCount() - 1, 0);
    EXPECT_NE(last.data(), model.index(0, 0).data());
    EXPECT_TRUE(model.setData(last, Qt::Unchecked, Qt::CheckStateRole));
    window.findChild<QPushButton*>(QStringLiteral("review_write"))->click();
  };
}

TEST_F(FeaturesSheet, WhoWasTakenOutAtTheReviewDoesNotComeAgain) {
  console::QtWritingDesk desk;
  OpenSheet open(session(), module(), Objects({kHelga, kTom}),
                 SheetFaults{.store = &store(), .desk = &desk});
  open.sheet().SelectPage(kFeaturesPage);
  QCoreApplication::processEvents();
  // Servers of the archive, and a switch.
  modal_scripts().Add([](QWidget& window) {
    contract::QtPlayer user(window);
    user.Type(IDC_ARCHIVER_NAME, "archive09");
    user.Click(IDC_ARCHIVER_ADD);
    user.Click(kDialogOk);
  });
  open.user().DoubleClickListViewCell(IDC_FEATURE_LIST, kArchiverRow, 1);
  open.user().ClickListViewCell(IDC_FEATURE_LIST, kImapRow, 1, false);
  open.user().Click(IDC_FEATURE_DISABLE);
  modal_scripts().Add(LeaveOutTheSecond());
  open.ClickApply();
  ASSERT_EQ(modal_scripts().waiting(), 0U);
  EXPECT_THAT(SearchEntry(file(), kHelga), Contains("peloraUserArchiveServers: archive09"));
  EXPECT_THAT(SearchEntry(file(), kTom), Not(Contains("peloraUserArchiveServers: archive09")));

  open.user().ClickListViewCell(IDC_FEATURE_LIST, kPop3Row, 1, false);
  open.user().Click(IDC_FEATURE_ENABLE);
  // Of one user alone: the other has it enabled, and nothing else is left of either.
  open.ClickApply();
  ASSERT_EQ(modal_scripts().waiting(), 0U);
  EXPECT_THAT(SearchEntry(file(), kTom), Not(Contains("peloraUserArchiveServers: archive09")));
  EXPECT_THAT(SearchEntry(file(), kTom), Not(Contains("peloraDisabledFeatures: imap")));
}

TEST_F(FeaturesSheet, ARowGoesBackToWhatWasRead) {
  OpenSheet& open = Open({kJuergen});
  const Lines read = Rows();
  modal_scripts().Add([](QWidget& window) {
    contract::QtPlayer user(window);
    user.Type(IDC_ARCHIVER_NAME, "archive09");
    user.Click(IDC_ARCHIVER_ADD);
    user.Click(kDialogOk);
  });
  DoubleClickRow(kArchiverRow);
  DoubleClickRow(kImapRow);
  EXPECT_NE(Rows(), read);
  EXPECT_TRUE(open.IsApplyEnabled());
  for (const RowIndex row : {kArchiverRow, kImapRow}) {
    ClickRow(row);
    QTest::keyClick(&View(), Qt::Key_R, Qt::ControlModifier);
  }
  EXPECT_EQ(Rows(), read);
  EXPECT_FALSE(open.IsApplyEnabled());
  open.ClickOk();
  EXPECT_FALSE(open.IsOpen());
  EXPECT_THAT(store().changed, ::testing::IsEmpty());
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
