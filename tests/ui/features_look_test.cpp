// SPDX-License-Identifier: Apache-2.0
// The features tab under the hands of the keyboard and of screen readers, and how it looks.
#include <gmock/gmock.h>

#include <QAccessible>
#include <QApplication>
#include <QTest>
#include <cstdlib>

#include "tests/ui/dark_theme.h"
#include "tests/ui/features_sheet.h"
#include "tests/ui/keep_picture.h"

namespace pelora::test {
namespace {

using Lines = std::vector<std::string>;

// Keys and screen readers.

TEST_F(FeaturesSheet, TheKeyboardSelectsAndEnterIsTheSheetsOk) {
  OpenSheet& open = Open({kTom});
  View().setFocus();
  QTest::keyClick(&View(), Qt::Key_Home);
  QTest::keyClick(&View(), Qt::Key_Down);
  EXPECT_EQ(Buttons(), "Disable");
  QTest::keyClick(&View(), Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(Buttons(), "Enable Disable");
  QTest::keyClick(&View(), Qt::Key_Up);
  QTest::keyClick(&View(), Qt::Key_Up);
  EXPECT_EQ(Buttons(), "Properties");
  QTest::keyClick(&View(), Qt::Key_Return);
  EXPECT_FALSE(open.IsOpen());
}

TEST_F(FeaturesSheet, EnterIsOkOnTheUserTabAfterTheFeaturesWereSeen) {
  OpenSheet& open = Open({kTom});
  open.sheet().SelectPage(0);
  QTest::keyClick(&open.sheet().Dialog(0)->Find(IDC_CAPACITY)->widget(), Qt::Key_Return);
  EXPECT_FALSE(open.IsOpen());
}

TEST_F(FeaturesSheet, ScreenReadersAreToldWhatEachControlIs) {
  OpenSheet& open = Open({kJuergen});
  EXPECT_EQ(AccessibleName(IDC_FEATURE_LIST), "Features");
  EXPECT_EQ(AccessibleName(IDC_FEATURE_ENABLE), "Enable");
  QAccessibleInterface* list = QAccessible::queryAccessibleInterface(&View());
  Lines told;
  for (int cell = 0; cell < list->childCount(); ++cell) {
    told.push_back(list->child(cell)->text(QAccessible::Name).toStdString());
  }
  EXPECT_THAT(told, ::testing::IsSupersetOf({"Feature", "Status", "pop3", "Unset"}))
      << "what is grey is said in words too";
  modal_scripts().Add([](QWidget& window) {
    const auto name_of = [&window](const char* control) {
      auto* widget = window.findChild<QWidget*>(QLatin1String(control));
      return widget->accessibleName().toStdString();
    };
    EXPECT_EQ(name_of("control_1002"), "Server name");
    EXPECT_EQ(name_of("control_1007"), "Archive Servers");
    contract::QtPlayer(window).Click(2);
  });
  ClickRow(kArchiverRow);
  open.user().Click(IDC_FEATURE_PROPERTIES);
}

// The look.

/// The colour in a cell that differs most from its ground: that of its text.
QColor TextColor(const QTreeWidget& view, RowIndex row, int column) {
  const QModelIndex cell = view.model()->index(static_cast<int>(row), column);
  const QImage drawn = view.viewport()->grab(view.visualRect(cell)).toImage();
  const int ground = qGray(view.palette().color(QPalette::Base).rgb());
  QRgb text = view.palette().color(QPalette::Base).rgb();
  for (int y = 0; y < drawn.height(); ++y) {
    for (int x = 0; x < drawn.width(); ++x) {
      const QRgb pixel = drawn.pixel(x, y);
      if (std::abs(qGray(pixel) - ground) > std::abs(qGray(text) - ground)) text = pixel;
    }
  }
  return QColor(text);
}

/// How far a text stands out from its ground, in shades of grey.
int Contrast(const QTreeWidget& view, RowIndex row, int column) {
  return std::abs(qGray(TextColor(view, row, column).rgb()) -
                  qGray(view.palette().color(QPalette::Base).rgb()));
}

TEST_F(FeaturesSheet, InALightThemeAnOpenStatusIsLightGrey) {
  OpenSheet& open = Open({kHelga, kTom, kJuergen});
  ASSERT_EQ(Rows(), (Lines{"archiver: Ambiguous", "imap: Enabled", "pop3: Ambiguous"}));
  // The row with the keyboard is drawn otherwise.
  View().clearFocus();
  KeepPicture(open.sheet(), "features-tab-light");
  const QColor grey(192, 192, 192);
  EXPECT_EQ(TextColor(View(), kArchiverRow, 1), grey);
  EXPECT_EQ(TextColor(View(), kPop3Row, 1), grey);
  EXPECT_GT(Contrast(View(), kImapRow, 1), 200);
  for (const RowIndex row : {kArchiverRow, kImapRow, kPop3Row}) {
    EXPECT_GT(Contrast(View(), row, 0), 200) << "the name of row " << row;
  }
  ClickRow(kPop3Row);
  open.user().Click(IDC_FEATURE_ENABLE);
  ClickRow(kImapRow);
  EXPECT_GT(Contrast(View(), kPop3Row, 1), 200) << "chosen, it is no longer open";
}

TEST_F(FeaturesSheet, InADarkThemeAnOpenStatusIsAsMuted) {
  const DarkTheme dark;
  OpenSheet& open = Open({kHelga, kTom, kJuergen});
  View().clearFocus();
  KeepPicture(open.sheet(), "features-tab-dark");
  EXPECT_GT(Contrast(View(), kImapRow, 1), 170);
  EXPECT_GT(Contrast(View(), kPop3Row, 0), 170);
  for (const RowIndex row : {kArchiverRow, kPop3Row}) {
    EXPECT_GT(Contrast(View(), row, 1), 50) << "still to be read";
    EXPECT_LT(Contrast(View(), row, 1), 90) << "muted";
    EXPECT_NE(TextColor(View(), row, 1), QColor(192, 192, 192));
  }
}

}  // namespace
}  // namespace pelora::test
