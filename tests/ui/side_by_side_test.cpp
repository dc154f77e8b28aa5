// SPDX-License-Identifier: Apache-2.0
// Several property sheets beside one another: of the same objects, and of objects in common.
#include <gmock/gmock.h>

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScreen>
#include <QStatusBar>
#include <QTest>

#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/main_window.h"
#include "resources/resource.h"
#include "tests/ui/console_test.h"
#include "tests/ui/open_sheet.h"

namespace pelora::test {
namespace {

using console::QtPropertySheet;
using console::ToUtf8;
using ::testing::Contains;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr int kPatience = 20000;

class SideBySide : public ConsoleTest {
 protected:
  SideBySide() : window_(module()) {
    // What another test has left behind is not remembered.
    for (const char* kind : {"user", "group"}) RememberPlace(kind, {});
    EXPECT_TRUE(window_.SetSession(TakeSession()));
    window_.show();
    Settle();
  }

  void Settle() {
    QCoreApplication::processEvents();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !window_.IsReading(); }, kPatience));
  }

  static void RememberPlace(const char* kind, const QByteArray& place) {
    console::Remembered().SetBytes(QStringLiteral("sheets/%1/geometry").arg(QLatin1String(kind)),
                                   place);
  }
  void Close(QtPropertySheet& sheet) {
    sheet.reject();
    EXPECT_FALSE(sheet.isVisible());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  [[nodiscard]] console::MainWindow& window() { return window_; }
  [[nodiscard]] QList<QtPropertySheet*> Sheets() { return window_.sheets().Open(); }

  void Show(const std::vector<std::string>& names) {
    std::vector<session::DirectoryObject> objects;
    const session::DirectoryBrowser browser(*window_.store());
    for (const std::string& name : names) {
      EXPECT_TRUE(browser.ReadObject(name, objects.emplace_back()).Ok()) << name;
    }
    window_.ShowProperties(objects);
  }
  /// Opens a sheet that is not open yet.
  [[nodiscard]] QtPropertySheet& Open(const std::vector<std::string>& names) {
    const qsizetype before = Sheets().size();
    Show(names);
    if (Sheets().size() != before + 1) throw std::runtime_error("there is no new sheet");
    return *Sheets().back();
  }
  static void Click(QtPropertySheet& sheet, ControlId control) {
    contract::QtPlayer(sheet).Click(control);
  }
  /// Types the hard limit of a quota of one's own.
  static void TypeQuota(QtPropertySheet& sheet, const char* megabytes) {
    contract::QtPlayer user(sheet);
    if (sheet.Dialog(0)->Check(IDC_QUOTA_OVERRIDE) != CheckState::kChecked) {
      user.Click(IDC_QUOTA_OVERRIDE);
    }
    user.Type(IDC_QUOTA_HARD, megabytes);
  }
  void GiveRolfHisAddress() {
    ModifyEntry(file(), std::string("dn: ") + kRolf +
                            "\nchangetype: modify\nreplace: mail\nmail: r.uhlig@side.example\n");
  }
  void Apply(QtPropertySheet& sheet) {
    sheet.ApplyButton().click();
    Settle();
  }
  /// Answers the window that is to come up next by a button.
  void Answer(const char* name, const char* button) {
    modal_scripts().Add([name, button](QWidget& asked) {
      EXPECT_EQ(asked.objectName(), QLatin1String(name));
      Press(button)(asked);
    });
  }
  /// What the next window of this name is called, which is answered by a button.
  void Answer(const char* name, const char* button, std::vector<std::string>& titles) {
    modal_scripts().Add([name, button, &titles](QWidget& asked) {
      EXPECT_EQ(asked.objectName(), QLatin1String(name));
      titles.push_back(ToUtf8(asked.parentWidget()->windowTitle()));
      Press(button)(asked);
    });
  }

 private:
  console::MainWindow window_;
};

TEST_F(SideBySide, SheetsOfDifferentObjectsStandTogetherAndTheWindowGoesOn) {
  QtPropertySheet& birgit = Open({kBirgit});
  QtPropertySheet& rolf = Open({kRolf});
  EXPECT_FALSE(birgit.isModal());
  EXPECT_FALSE(rolf.isModal());
  Click(birgit, IDC_PELORA_HIDDEN);
  Click(rolf, IDC_PELORA_HIDDEN);
  Apply(birgit);
  EXPECT_FALSE(birgit.HasUnsavedEdits());
  EXPECT_TRUE(rolf.HasUnsavedEdits());
  window().pane().Refresh();
  Settle();
  Apply(rolf);
  EXPECT_THAT(SearchEntry(file(), kBirgit), Contains("peloraHidden: 1"));
  EXPECT_THAT(SearchEntry(file(), kRolf), Contains("peloraHidden: 1"));
}

TEST_F(SideBySide, TheSameObjectsAreOpenedOnceInWhateverOrder) {
  QtPropertySheet& both = Open({kBirgit, kRolf});
  (void)Open({kRolf});
  Show({kRolf, kBirgit});
  EXPECT_EQ(Sheets().size(), 2);
  EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == &both; }, kPatience));
}

TEST_F(SideBySide, ASheetThatWasPutAwayComesBack) {
  QtPropertySheet& birgit = Open({kBirgit});
  birgit.setWindowState(Qt::WindowMinimized);
  QCoreApplication::processEvents();
  Show({kBirgit});
  EXPECT_EQ(Sheets().size(), 1);
  EXPECT_FALSE(birgit.isMinimized());
}

TEST_F(SideBySide, TwoSheetsThatChangeOneFieldEndInTheConflictBox) {
  QtPropertySheet& one = Open({kBirgit});
  QtPropertySheet& both = Open({kBirgit, kRolf});
  TypeQuota(one, "3001");
  TypeQuota(both, "3002");
  Apply(one);
  EXPECT_THAT(SearchEntry(file(), kBirgit), Contains("peloraQuotaHard: 3001"));

  Answer("review", "&Write 2 Objects");
  Answer("conflicts", "Cancel");
  modal_scripts().Add([](QWidget& results) {
    EXPECT_EQ(results.objectName(), QStringLiteral("results"));
    results.close();
  });
  Apply(both);
  EXPECT_THAT(SearchEntry(file(), kBirgit), Contains("peloraQuotaHard: 3001"));
  EXPECT_TRUE(both.HasUnsavedEdits());
}

TEST_F(SideBySide, ClosingAsksForEverySheetBeforeTheFirstIsClosed) {
  (void)Open({kAnna});
  QtPropertySheet& birgit = Open({kBirgit});
  QtPropertySheet& rolf = Open({kRolf});
  Click(birgit, IDC_PELORA_HIDDEN);
  Click(rolf, IDC_PELORA_HIDDEN);
  std::vector<std::string> asked;
  Answer("discard_question", "&Discard", asked);
  Answer("discard_question", "&Keep Editing", asked);
  EXPECT_FALSE(window().close());
  EXPECT_THAT(asked, ::testing::ElementsAre("Birgit Krämer Properties", "Rolf Uhlig Properties"));
  EXPECT_EQ(Sheets().size(), 3) << "what was given up for nothing is there still";
  EXPECT_TRUE(birgit.HasUnsavedEdits());
  EXPECT_TRUE(rolf.HasUnsavedEdits());

  Answer("discard_question", "&Discard");
  Answer("discard_question", "&Discard");
  EXPECT_TRUE(window().close());
  EXPECT_THAT(Sheets(), IsEmpty());
  EXPECT_THAT(SearchEntry(file(), kRolf), Not(Contains("peloraHidden: 1")));
}

TEST_F(SideBySide, AnotherDirectoryIsRefusedInWordsWhileASheetIsKept) {
  QtPropertySheet& birgit = Open({kBirgit});
  QtPropertySheet& rolf = Open({kRolf});
  Click(rolf, IDC_PELORA_HIDDEN);
  Answer("discard_question", "&Keep Editing");
  EXPECT_FALSE(window().OpenFile(console::ToQString(file())));
  EXPECT_EQ(ToUtf8(window().statusBar()->currentMessage()),
            "The directory stays open: there are changes that were not applied.");
  EXPECT_TRUE(birgit.isVisible());
  Apply(rolf);
  EXPECT_THAT(SearchEntry(file(), kRolf), Contains("peloraHidden: 1"));
}

TEST_F(SideBySide, NothingIsTakenFromUnderneathAWindowThatIsWaitedFor) {
  QtPropertySheet& birgit = Open({kBirgit});
  modal_scripts().Add([this](QWidget& dialog) {
    EXPECT_FALSE(window().OpenFile(console::ToQString(file())));
    EXPECT_EQ(ToUtf8(window().statusBar()->currentMessage()),
              "Another directory can be opened when what is waited for is through.");
    EXPECT_FALSE(window().close());
    contract::QtPlayer user(dialog);
    user.Type(IDC_EMAIL_ADDRESS, "late@linden-werke.example");
    user.PressEnter();
  });
  Click(birgit, IDC_EMAIL_ADD);
  ASSERT_EQ(Sheets().size(), 1);
  Apply(birgit);
  EXPECT_THAT(SearchEntry(file(), kBirgit), Contains("otherMailbox: late@linden-werke.example"));
}

/// Types an address of Rolf's into the dialog of another's addresses, and opens whose it is.
contract::ModalScript OpenItsOwner() {
  return [](QWidget& dialog) {
    contract::QtPlayer user(dialog);
    user.Type(IDC_EMAIL_ADDRESS, "r.uhlig@side.example");
    auto* const open = dialog.findChild<QPushButton*>(QStringLiteral("page_foot_action"));
    EXPECT_TRUE(QTest::qWaitFor([open] { return open->isVisible(); }, kPatience));
    open->click();
    user.Click(static_cast<ControlId>(kDialogCancel));
  };
}

TEST_F(SideBySide, WhoIsFoundFromWithinADialogIsShownOverIt) {
  GiveRolfHisAddress();
  QtPropertySheet& birgit = Open({kBirgit});
  modal_scripts().Add(OpenItsOwner());
  modal_scripts().Add([](QWidget& over) {
    EXPECT_EQ(ToUtf8(over.windowTitle()), "Rolf Uhlig Properties");
    EXPECT_TRUE(over.isModal());
    over.close();
  });
  Click(birgit, IDC_EMAIL_ADD);
  EXPECT_EQ(modal_scripts().waiting(), 0U);
}

TEST_F(SideBySide, WhoStandsOpenIsNotOpenedASecondTimeFromWithinADialog) {
  GiveRolfHisAddress();
  QtPropertySheet& birgit = Open({kBirgit});
  (void)Open({kRolf});
  contract::Activate(birgit);
  modal_scripts().Add(OpenItsOwner());
  Answer("open_already", "OK");
  Click(birgit, IDC_EMAIL_ADD);
  EXPECT_EQ(modal_scripts().waiting(), 0U);
  EXPECT_EQ(Sheets().size(), 2);
}

TEST_F(SideBySide, TheCommandsForASelectionStandInTheMenu) {
  auto* const action = window().findChild<QAction*>(QStringLiteral("change_selection"));
  ASSERT_NE(action, nullptr);
  EXPECT_FALSE(action->isEnabled()) << "nothing is selected";
  const QString folder =
      QStringLiteral("OU=Vertrieb,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example");
  window().pane().GoTo(ToUtf8(folder));
  ASSERT_TRUE(QTest::qWaitFor(
      [&] {
        const session::DirectoryObject* const shown = window().pane().Container();
        return shown != nullptr && shown->dn == ToUtf8(folder) && !window().IsReading();
      },
      kPatience));
  window().pane().list().Select({kBirgit, "CN=Stefan Ebert," + ToUtf8(folder)});
  Settle();
  ASSERT_EQ(window().pane().list().Selection().size(), 2U);
  QMenu* menu = nullptr;
  for (const QAction* const entry : window().menuBar()->actions()) {
    if (entry->menu() != nullptr && entry->menu()->actions().contains(action)) menu = entry->menu();
  }
  ASSERT_NE(menu, nullptr) << "it is in no menu of the bar";
  EXPECT_EQ(ToUtf8(menu->title()), "&Object");
  EXPECT_TRUE(action->isEnabled());
  modal_scripts().Add([](QWidget& commands) {
    EXPECT_EQ(commands.objectName(), QStringLiteral("commands"));
    commands.close();
  });
  action->trigger();
  EXPECT_EQ(modal_scripts().waiting(), 0U);
}

TEST_F(SideBySide, TheSheetOfAnObjectIsFoundByItsName) {
  EXPECT_EQ(window().sheets().SheetOf(kBirgit), nullptr);
  QtPropertySheet& both = Open({kBirgit, kRolf});
  EXPECT_EQ(window().sheets().SheetOf(kBirgit), &both);
  EXPECT_EQ(window().sheets().SheetOf(kUrsula), nullptr);
  Close(both);
  EXPECT_EQ(window().sheets().SheetOf(kBirgit), nullptr);
}

TEST_F(SideBySide, ASheetOpensWhereTheLastOfItsKindLayAndAsLarge) {
  QtPropertySheet& birgit = Open({kBirgit});
  const QSize usual = birgit.size();
  const QPoint place(40, 50);
  const QSize size = usual + QSize(70, 60);
  birgit.move(place);
  birgit.resize(size);
  Close(birgit);
  QtPropertySheet& rolf = Open({kRolf});
  EXPECT_EQ(rolf.pos(), place);
  EXPECT_EQ(rolf.size(), size);
  EXPECT_NE(Open({kGroup}).size(), size) << "of another kind";
}

TEST_F(SideBySide, ASheetOpensOnTheScreenWhereverItLayBefore) {
  QWidget elsewhere;
  elsewhere.setGeometry(7000, 6000, 5000, 4000);
  for (const QByteArray& remembered :
       {elsewhere.saveGeometry(), QByteArray("no place at all"), QByteArray(100'000, '\xFF')}) {
    RememberPlace("user", remembered);
    QtPropertySheet& sheet = Open({kBirgit});
    EXPECT_TRUE(sheet.screen()->availableGeometry().contains(sheet.frameGeometry()));
    Close(sheet);
  }
}

TEST_F(SideBySide, NoSheetHidesAnother) {
  QtPropertySheet& first = Open({kBirgit});
  first.move(20, 30);
  Close(first);
  const QList<QtPropertySheet*> sheets = {&Open({kBirgit}), &Open({kRolf}), &Open({kAnna})};
  EXPECT_EQ(sheets[0]->pos(), QPoint(20, 30));
  for (qsizetype at = 1; at < sheets.size(); ++at) {
    EXPECT_GT(sheets[at]->x(), sheets[at - 1]->x());
    EXPECT_GT(sheets[at]->y(), sheets[at - 1]->y());
  }
}

TEST_F(SideBySide, APageGrowsWithItsSheetAndIsScrolledInASmallOne) {
  QtPropertySheet& sheet = Open({kBirgit});
  const QWidget& list = sheet.Dialog(0)->Find(IDC_EMAIL_LIST)->widget();
  const QSize usual = list.size();
  sheet.resize(sheet.size() + QSize(120, 90));
  QCoreApplication::processEvents();
  EXPECT_EQ(list.width(), usual.width() + 120);
  EXPECT_GT(list.height(), usual.height());

  sheet.resize(320, 240);
  QCoreApplication::processEvents();
  EXPECT_LE(sheet.height(), 240);
  const QWidget& page = sheet.Dialog(0)->widget();
  EXPECT_EQ(page.size(), page.minimumSize()) << "no smaller than its template wants it";
  const QRect window = sheet.rect();
  const auto place_of = [&sheet](const QWidget& widget) {
    return QRect(widget.mapTo(&sheet, QPoint(0, 0)), widget.size());
  };
  EXPECT_TRUE(window.contains(place_of(sheet.ApplyButton())));
  QWidget& last = sheet.Dialog(0)->Find(IDC_SENDAS_ADD)->widget();
  EXPECT_FALSE(window.contains(place_of(last)));
  contract::Activate(sheet);
  last.setFocus();
  EXPECT_TRUE(window.contains(place_of(last))) << "what has the keyboard is in sight";
}

}  // namespace
}  // namespace pelora::test
