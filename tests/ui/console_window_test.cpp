// SPDX-License-Identifier: Apache-2.0
// The main window: containers, objects, selection and the way to the properties.
#include <gmock/gmock.h>

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

#include "resources/resource.h"
#include "tests/ui/open_sheet.h"
#include "tests/ui/scripted_store.h"
#include "tests/ui/window_test.h"

namespace pelora::test {
namespace {

using console::ToUtf8;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class Window : public WindowTest {
 protected:
  [[nodiscard]] QTreeView& tree() {
    return *window().findChild<QTreeView*>(QStringLiteral("container_tree"));
  }
  [[nodiscard]] QLineEdit& filter() {
    return *window().findChild<QLineEdit*>(QStringLiteral("object_filter"));
  }
  [[nodiscard]] QAction& properties() {
    for (QAction* action : window().findChildren<QAction*>()) {
      if (action->text() == QStringLiteral("&Properties")) return *action;
    }
    throw std::runtime_error("there is no such action");
  }

  [[nodiscard]] QModelIndex RowOf(const char* name) {
    const auto rows = list().model()->match(list().model()->index(0, 0), Qt::DisplayRole,
                                            QString::fromUtf8(name), 1, Qt::MatchExactly);
    if (rows.isEmpty()) throw std::runtime_error(std::string("no row ") + name);
    return rows.first();
  }
  void Click(const char* name, Qt::KeyboardModifier key = Qt::NoModifier) {
    QTest::mouseClick(list().viewport(), Qt::LeftButton, key, Place(name));
  }
  void DoubleClick(const char* name) {
    QTest::mouseClick(list().viewport(), Qt::LeftButton, Qt::NoModifier, Place(name));
    QTest::mouseDClick(list().viewport(), Qt::LeftButton, Qt::NoModifier, Place(name));
    Settle();
  }
  [[nodiscard]] std::string Container() { return ToUtf8(tree().currentIndex().data().toString()); }
  void GoTo(std::initializer_list<const char*> containers) {
    for (const char* container : containers) DoubleClick(container);
  }
  void GoToSales() { GoTo({"Linden-Werke Chemnitz", "Vertrieb"}); }
  [[nodiscard]] std::vector<std::string> SelectedNames() {
    std::vector<std::string> names;
    for (const auto& object : window().Selection()) names.push_back(object.name);
    return names;
  }
  [[nodiscard]] QList<console::QtPropertySheet*> Sheets() { return window().sheets().Open(); }

 private:
  [[nodiscard]] QPoint Place(const char* name) {
    const QModelIndex row = RowOf(name);
    list().scrollTo(row);
    return list().visualRect(row).center();
  }
};

TEST_F(Window, ShowsTheBaseAndWhatStandsRightBelow) {
  EXPECT_EQ(ToUtf8(window().windowTitle()), "company.ldb - Pelora Console");
  EXPECT_EQ(Container(), "linden-werke.example");
  EXPECT_THAT(Names(),
              ElementsAre("Builtin", "Computers", "Groupware Servers", "Linden Optiki Thessaloniki",
                          "Linden Servis Beograd", "Linden-Werke Chemnitz", "Users"));
  EXPECT_THAT(Column(1), Contains("Organizational Unit").Times(4));
  EXPECT_THAT(Column(2), Contains("Head office and works"));
  EXPECT_THAT(StatusTexts(), HasSubstr("7 objects|"));
}

TEST_F(Window, ReadsAContainerOnlyWhenItIsOpened) {
  const QModelIndex base = tree().currentIndex();
  const QModelIndex company = tree().model()->index(5, 0, base);
  ASSERT_EQ(ToUtf8(company.data().toString()), "Linden-Werke Chemnitz");
  EXPECT_EQ(tree().model()->rowCount(company), 0);
  EXPECT_TRUE(tree().model()->hasChildren(company));
  tree().expand(company);
  Settle();
  EXPECT_EQ(tree().model()->rowCount(company), 9);
}

TEST_F(Window, TheTreeHoldsContainersOnly) {
  GoToSales();
  EXPECT_THAT(Names(), Contains("Birgit Krämer"));
  tree().expand(tree().currentIndex());
  Settle();
  EXPECT_EQ(tree().model()->rowCount(tree().currentIndex()), 0);
  EXPECT_FALSE(tree().model()->hasChildren(tree().currentIndex()));
}

TEST_F(Window, ADoubleClickOpensAContainerAndUpLeavesIt) {
  DoubleClick("Linden-Werke Chemnitz");
  EXPECT_EQ(Container(), "Linden-Werke Chemnitz");
  EXPECT_THAT(Names(), Contains("Vertrieb"));
  DoubleClick("Vertrieb");
  EXPECT_EQ(Container(), "Vertrieb");
  EXPECT_THAT(Names(), Contains("Birgit Krämer"));
  QTest::keyClick(&window(), Qt::Key_Up, Qt::AltModifier);
  EXPECT_EQ(Container(), "Linden-Werke Chemnitz");
}

TEST_F(Window, ShowsTypesAndHasAnIconForEach) {
  GoTo({"Linden-Werke Chemnitz", "Adresslisten"});
  EXPECT_THAT(Column(1), Contains("Address List"));
  EXPECT_THAT(Column(1), Contains("Dynamic Distribution List"));
  for (int row = 0; row < list().model()->rowCount(); ++row) {
    const auto icon = list().model()->index(row, 0).data(Qt::DecorationRole).value<QIcon>();
    EXPECT_FALSE(icon.pixmap(16, 16).toImage().isNull());
  }
}

TEST_F(Window, SortsInTheLanguagesOrder) {
  GoTo({"Linden-Werke Chemnitz", "Entwicklung"});
  const std::vector<std::string> expected = {"Frank Seidel", "Ines Großmann", "Labor I/O",
                                             "Łukasz Żak",   "Peter Lämmel",  "Zoë Haupt",
                                             "林田 美咲"};
  EXPECT_EQ(Names(), expected);
  list().sortByColumn(0, Qt::DescendingOrder);
  EXPECT_EQ(Names(), std::vector<std::string>(expected.rbegin(), expected.rend()));
  list().sortByColumn(1, Qt::AscendingOrder);
  EXPECT_EQ(Names().front(), "Labor I/O");
}

TEST_F(Window, TheFilterLooksIntoEveryColumn) {
  QTest::keyClick(&window(), Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(QApplication::focusWidget(), &filter());
  QTest::keyClicks(&filter(), QStringLiteral("BEOGRAD"));
  EXPECT_THAT(Names(), ElementsAre("Linden Servis Beograd"));
  EXPECT_THAT(StatusTexts(), HasSubstr("1 of 7 objects"));
  filter().setText(QStringLiteral("head office"));
  EXPECT_THAT(Names(), ElementsAre("Linden-Werke Chemnitz"));
  QTest::keyClick(&filter(), Qt::Key_Escape);
  EXPECT_EQ(Names().size(), 7U);
}

TEST_F(Window, SeveralObjectsAreSelectedInTheOrderShown) {
  GoToSales();
  Click("Stefan Ebert");
  Click("Birgit Krämer", Qt::ControlModifier);
  EXPECT_THAT(SelectedNames(), ElementsAre("Birgit Krämer", "Stefan Ebert"));
  EXPECT_THAT(StatusTexts(), HasSubstr("2 selected"));
  list().sortByColumn(0, Qt::DescendingOrder);
  EXPECT_THAT(SelectedNames(), ElementsAre("Stefan Ebert", "Birgit Krämer"));
}

TEST_F(Window, OpensPropertiesInEveryWay) {
  GoToSales();
  Click("Birgit Krämer");
  EXPECT_TRUE(properties().isEnabled());
  const auto close = [this] {
    ASSERT_EQ(Sheets().size(), 1);
    EXPECT_EQ(ToUtf8(Sheets().front()->windowTitle()), "Birgit Krämer Properties");
    Sheets().front()->reject();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_THAT(Sheets(), IsEmpty());
    // No window manager hands the activation on.
    contract::Activate(window());
    list().setFocus();
    QCoreApplication::processEvents();
  };
  DoubleClick("Birgit Krämer");
  close();
  QTest::keyClick(&list(), Qt::Key_Return);
  close();
  QTest::keyClick(&list(), Qt::Key_Return, Qt::AltModifier);
  close();
  properties().trigger();
  close();
}

TEST_F(Window, OpensOneSheetForSeveralUsers) {
  GoToSales();
  Click("Birgit Krämer");
  Click("Stefan Ebert", Qt::ControlModifier);
  properties().trigger();
  ASSERT_EQ(Sheets().size(), 1);
  EXPECT_EQ(ToUtf8(Sheets().front()->windowTitle()), "2 selected objects Properties");
  EXPECT_FALSE(Sheets().front()->Dialog(0)->IsShown(IDC_EMAIL_LIST));
  properties().trigger();
  EXPECT_EQ(Sheets().size(), 1) << "a second time brings the sheet to the front";
}

TEST_F(Window, SaysWhyThereAreNoProperties) {
  GoTo({"Linden-Werke Chemnitz", "Fertigung"});
  DoubleClick("Plotter Halle A");
  EXPECT_THAT(Sheets(), IsEmpty());
  EXPECT_FALSE(properties().isEnabled());
  constexpr const char* kReason = "Objects of the type printQueue have no properties to show.";
  EXPECT_EQ(ToUtf8(properties().statusTip()), kReason);
  EXPECT_THAT(StatusTexts(), HasSubstr(kReason));
}

TEST_F(Window, ASelectionWithoutCommonTabsHasNoProperties) {
  GoTo({"Users"});
  Click("Administrator");
  EXPECT_TRUE(properties().isEnabled());
  Click("Domain Users", Qt::ControlModifier);
  EXPECT_FALSE(properties().isEnabled());
  constexpr const char* kReason = "The selected objects have no properties in common.";
  EXPECT_EQ(ToUtf8(properties().statusTip()), kReason);
  EXPECT_THAT(StatusTexts(), HasSubstr(kReason));
}

TEST_F(Window, ActionsConcernTheContainerWhileTheTreeIsUsed) {
  GoToSales();
  Click("Birgit Krämer");
  EXPECT_THAT(SelectedNames(), ElementsAre("Birgit Krämer"));
  tree().setFocus();
  EXPECT_THAT(SelectedNames(), ElementsAre("Vertrieb"));
  properties().trigger();
  ASSERT_EQ(Sheets().size(), 1);
  EXPECT_EQ(ToUtf8(Sheets().front()->windowTitle()), "Vertrieb Properties");
  list().setFocus();
  EXPECT_THAT(SelectedNames(), ElementsAre("Birgit Krämer"));
  EXPECT_TRUE(properties().isEnabled());
}

TEST_F(Window, AContainerThatIsNoCompanyHasNoProperties) {
  GoTo({"Users"});
  tree().setFocus();
  EXPECT_THAT(SelectedNames(), ElementsAre("Users"));
  EXPECT_FALSE(properties().isEnabled());
}

TEST_F(Window, RefreshShowsWhatOthersChangedAndKeepsTheSelection) {
  GoToSales();
  Click("Birgit Krämer");
  ModifyEntry(file(), std::string("dn: ") + kBirgit +
                          "\nchangetype: modify\nreplace: description\ndescription: Seen\n");
  EXPECT_THAT(Column(2), ::testing::Not(Contains("Seen")));
  QTest::keyClick(&window(), Qt::Key_F5);
  Settle();
  EXPECT_THAT(Column(2), Contains("Seen"));
  EXPECT_EQ(Container(), "Vertrieb");
  EXPECT_THAT(SelectedNames(), ElementsAre("Birgit Krämer"));
}

TEST_F(Window, AnApplyRefreshesTheList) {
  GoToSales();
  DoubleClick("Birgit Krämer");
  ModifyEntry(file(), std::string("dn: ") + kBirgit +
                          "\nchangetype: modify\nreplace: description\ndescription: Seen\n");
  contract::QtPlayer user(*Sheets().front());
  user.Click(IDC_PELORA_HIDDEN);
  Sheets().front()->ApplyButton().click();
  Settle();
  EXPECT_THAT(Column(2), Contains("Seen"));
}

TEST_F(Window, AFileThatCannotBeOpenedIsReportedAndTheOldOneStays) {
  for (const std::string& path : {folder().File("missing.ldb"), std::string("/etc/passwd")}) {
    std::string told;
    modal_scripts().Add([&told](QWidget& box) {
      told = ToUtf8(qobject_cast<QMessageBox*>(&box)->informativeText());
      box.close();
    });
    EXPECT_FALSE(window().OpenFile(console::ToQString(path)));
    QCoreApplication::processEvents();
    EXPECT_THAT(told, HasSubstr(path));
    EXPECT_EQ(Names().size(), 7U);
  }
}

TEST_F(Window, ADirectoryThatCannotBeReadCostsNobodyHisSheets) {
  GoToSales();
  DoubleClick("Birgit Krämer");
  contract::QtPlayer user(*Sheets().front());
  user.Click(IDC_PELORA_HIDDEN);
  std::string told;
  modal_scripts().Add([&told](QWidget& box) {
    told = ToUtf8(qobject_cast<QMessageBox*>(&box)->informativeText());
    box.close();
  });
  EXPECT_FALSE(window().SetSession(std::make_unique<session::DirectorySession>(
      "broken.ldb", std::make_unique<ScriptedStore>(nullptr), ldap::StoreOpener())));
  QCoreApplication::processEvents();
  EXPECT_EQ(told, "no such object");
  EXPECT_EQ(Container(), "Vertrieb");
  ASSERT_EQ(Sheets().size(), 1);
  Sheets().front()->ApplyButton().click();
  EXPECT_THAT(SearchEntry(file(), kBirgit), Contains("peloraHidden: 1"));
}

TEST_F(Window, AnotherFileIsOpenedAfterTheSheetsAreClosed) {
  GoToSales();
  DoubleClick("Birgit Krämer");
  contract::QtPlayer user(*Sheets().front());
  user.Click(IDC_PELORA_HIDDEN);
  const QString path = console::ToQString(file());
  modal_scripts().Add(Press("&Keep Editing"));
  EXPECT_FALSE(window().OpenFile(path));
  EXPECT_EQ(Container(), "Vertrieb");
  EXPECT_EQ(Sheets().size(), 1);
  modal_scripts().Add(Press("&Discard"));
  EXPECT_TRUE(window().OpenFile(path));
  EXPECT_TRUE(QTest::qWaitFor([this] { return Container() == "Vertrieb"; }, kPatience))
      << "where it was last: " << Container();
  EXPECT_THAT(Sheets(), IsEmpty());
}

TEST_F(Window, ClosingAsksForTheSheetsThatHoldEdits) {
  GoToSales();
  DoubleClick("Birgit Krämer");
  contract::QtPlayer user(*Sheets().front());
  user.Click(IDC_PELORA_HIDDEN);
  modal_scripts().Add(Press("&Keep Editing"));
  EXPECT_FALSE(window().close());
  EXPECT_TRUE(window().isVisible());
  modal_scripts().Add(Press("&Discard"));
  EXPECT_TRUE(window().close());
}

TEST_F(Window, TheConnectionIsTold) {
  std::string told;
  modal_scripts().Add([&told](QWidget& box) {
    EXPECT_EQ(ToUtf8(box.objectName()), "connection_box");
    told = ToUtf8(qobject_cast<QMessageBox*>(&box)->informativeText());
    box.close();
  });
  auto* const connection = window().findChild<QAction*>(QStringLiteral("show_connection"));
  ASSERT_NE(connection, nullptr);
  EXPECT_TRUE(connection->isEnabled());
  connection->trigger();
  EXPECT_EQ(told, "Directory file: " + file());
}

TEST_F(Window, FitsOnASmallScreen) {
  EXPECT_LE(window().minimumSizeHint().width(), 1024);
  EXPECT_LE(window().minimumSizeHint().height(), 700);
  GoToSales();
  DoubleClick("Birgit Krämer");
  EXPECT_LE(Sheets().front()->height(), 700);
}

}  // namespace
}  // namespace pelora::test
