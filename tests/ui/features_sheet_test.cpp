// SPDX-License-Identifier: Apache-2.0
// The features tab in its sheet, from the click to the directory file, and how it looks.
#include <gmock/gmock.h>

#include <QAccessible>
#include <QApplication>
#include <QDir>
#include <QHeaderView>
#include <QListWidget>
#include <QScrollBar>
#include <QTabWidget>
#include <QTest>
#include <QTreeWidget>

#include "hosts/console/qt_text.h"
#include "hosts/console/screenshot.h"
#include "resources/resource.h"
#include "tests/support/fault_directory.h"
#include "tests/ui/console_test.h"
#include "tests/ui/open_sheet.h"

namespace pelora::test {
namespace {

using console::ToQString;
using pelora::testing::FaultDirectory;
using pelora::testing::FaultPoint;
using Lines = std::vector<std::string>;

#define STAFF ",OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example"
/// Has imap and pop3 enabled.
constexpr const char* kHelga = "CN=Helga Önder,OU=IT" STAFF;
/// Has imap enabled and pop3 disabled.
constexpr const char* kTom = "CN=Tom Richter,OU=IT" STAFF;
/// Has imap enabled and two archive servers.
constexpr const char* kJuergen = "CN=Jürgen Weißflog,OU=Geschäftsleitung" STAFF;
#undef STAFF

constexpr std::size_t kFeaturesPage = 1;
constexpr RowIndex kArchiverRow = 0;
constexpr RowIndex kImapRow = 1;
constexpr RowIndex kPop3Row = 2;

class FeaturesSheet : public ConsoleTest {
 protected:
  FeaturesSheet() { QDir().mkpath(QStringLiteral(PELORA_SCREENSHOTS)); }

  [[nodiscard]] OpenSheet& Open(const std::vector<std::string>& names) {
    sheet_ = std::make_unique<OpenSheet>(faulty_, module(), Objects(names));
    sheet_->sheet().SelectPage(kFeaturesPage);
    QCoreApplication::processEvents();
    return *sheet_;
  }
  [[nodiscard]] console::QtDialog& Dialog() { return *sheet_->sheet().Dialog(kFeaturesPage); }
  [[nodiscard]] QWidget& Widget(ControlId id) { return Dialog().Find(id)->widget(); }
  [[nodiscard]] QTreeWidget& View() { return static_cast<QTreeWidget&>(Widget(IDC_FEATURE_LIST)); }
  [[nodiscard]] Lines Rows() {
    Lines rows;
    const IListView& list = Dialog().ListView(IDC_FEATURE_LIST);
    for (RowIndex row = 0; row < list.RowCount(); ++row) {
      rows.push_back(list.Text(row, 0) + ": " + list.Text(row, 1));
    }
    return rows;
  }
  [[nodiscard]] std::string Buttons() {
    std::string enabled;
    for (const ControlId id : {IDC_FEATURE_PROPERTIES, IDC_FEATURE_ENABLE, IDC_FEATURE_DISABLE}) {
      if (Dialog().IsEnabled(id)) enabled += (enabled.empty() ? "" : " ") + Dialog().Text(id);
    }
    return enabled.empty() ? "none" : enabled;
  }
  void ClickRow(RowIndex row, bool add = false) {
    sheet_->user().ClickListViewCell(IDC_FEATURE_LIST, row, 1, add);
  }
  void DoubleClickRow(RowIndex row) {
    sheet_->user().DoubleClickListViewCell(IDC_FEATURE_LIST, row, 1);
  }
  [[nodiscard]] std::string AccessibleName(ControlId id) {
    return QAccessible::queryAccessibleInterface(&Widget(id))
        ->text(QAccessible::Name)
        .toStdString();
  }
  [[nodiscard]] EntryLines Entry(const char* dn) const { return SearchEntry(file(), dn); }
  [[nodiscard]] pelora::testing::FaultPlan& plan() { return faulty_.plan(); }
  static void Keep(QWidget& window, const char* name) {
    const QString path = QStringLiteral(PELORA_SCREENSHOTS "/%1.png").arg(QLatin1String(name));
    EXPECT_EQ(console::WriteScreenshot(window, path).toStdString(), "");
  }

 private:
  FaultDirectory faulty_{session().service};
  std::unique_ptr<OpenSheet> sheet_;
};

/// What is left of an entry's difference without the capacity that the user tab always writes.
Lines Features(const Lines& difference) {
  Lines features = difference;
  std::erase_if(features, [](const std::string& line) {
    return line.find("peloraResourceCapacity") != std::string::npos;
  });
  return features;
}

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
  EXPECT_EQ(Features(Difference(helga, Entry(kHelga))),
            (Lines{"- peloraEnabledFeatures: imap", "+ peloraDisabledFeatures: imap"}));
  EXPECT_EQ(Features(Difference(tom, Entry(kTom))),
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
  EXPECT_EQ(Features(Difference(before, Entry(kTom))),
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
    user.Click(1);
  });
  open.user().Click(IDC_FEATURE_PROPERTIES);
  EXPECT_EQ(Rows()[kArchiverRow], "archiver: Enabled on servers 'archive02', 'archive03'");
  EXPECT_EQ(View().topLevelItem(0)->toolTip(1).toStdString(),
            "Enabled on servers 'archive02', 'archive03'")
      << "a text that its column cuts short stands whole somewhere";
  EXPECT_FALSE(open.IsApplyEnabled());
  open.ClickOk();
  EXPECT_EQ(
      Features(Difference(before, Entry(kJuergen))),
      (Lines{"- peloraUserArchiveServers: archive01", "+ peloraUserArchiveServers: archive03"}));
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
  EXPECT_EQ(Features(Difference(helga, Entry(kHelga))), Lines{});
  EXPECT_EQ(Rows()[kImapRow], "imap: Disabled");
  open.ClickApply();
  EXPECT_FALSE(open.IsApplyEnabled());
  EXPECT_EQ(Features(Difference(helga, Entry(kHelga))),
            (Lines{"- peloraEnabledFeatures: imap", "+ peloraDisabledFeatures: imap"}));
}

TEST_F(FeaturesSheet, ACommitThatFailsOnTheSecondOfThreeUsersIsDoneByTheRetry) {
  const std::array users = {kHelga, kTom, kJuergen};
  std::array<EntryLines, 3> before;
  std::ranges::transform(users, before.begin(), [this](const char* dn) { return Entry(dn); });
  const auto written = [&](std::size_t user) {
    return Features(Difference(before.at(user), Entry(users.at(user))));
  };
  const Lines disabled = {"- peloraEnabledFeatures: imap", "+ peloraDisabledFeatures: imap"};
  OpenSheet& open = Open({users.begin(), users.end()});
  ClickRow(kImapRow);
  open.user().Click(IDC_FEATURE_DISABLE);
  // The tab before this one commits each of them first.
  plan().Fail(FaultPoint::kSetInfo, users.size() + 2, E_ACCESSDENIED);
  ShownBox box;
  modal_scripts().Add(Confirm(box));
  open.ClickApply();
  EXPECT_EQ(box.text, "Unknown error occured\n\nError code: 0X80070005");
  EXPECT_TRUE(open.IsApplyEnabled());
  EXPECT_EQ(written(0), disabled);
  EXPECT_EQ(written(1), Lines{});
  EXPECT_EQ(written(2), Lines{});
  open.ClickApply();
  EXPECT_FALSE(open.IsApplyEnabled());
  for (std::size_t user = 0; user < users.size(); ++user)
    EXPECT_EQ(written(user), disabled) << user;
}

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

/// Sets the colours of a dark theme for as long as it lives.
class DarkTheme {
 public:
  DarkTheme() {
    QPalette dark(QColor(0x31, 0x36, 0x3B));
    dark.setColor(QPalette::Base, QColor(0x23, 0x26, 0x29));
    dark.setColor(QPalette::Text, QColor(0xEF, 0xF0, 0xF1));
    QApplication::setPalette(dark);
  }
  ~DarkTheme() { QApplication::setPalette(light_); }
  DarkTheme(const DarkTheme&) = delete;
  DarkTheme& operator=(const DarkTheme&) = delete;

 private:
  QPalette light_ = QApplication::palette();
};

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
  Keep(open.sheet(), "features-tab-light");
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
  Keep(open.sheet(), "features-tab-dark");
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
