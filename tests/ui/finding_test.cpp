// SPDX-License-Identifier: Apache-2.0
// Finding objects in the main window, in as few steps as can be.
#include <gmock/gmock.h>

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QHeaderView>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QSettings>
#include <QTimer>

#include "hosts/console/finding/column_dialog.h"
#include "hosts/console/window/object_icons.h"
#include "resources/resource.h"
#include "tests/ui/keep_picture.h"
#include "tests/ui/window_test.h"

namespace pelora::test {
namespace {

using console::MainWindow;
using console::ToUtf8;
using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::StartsWith;
using ::testing::UnorderedElementsAre;

class Finding : public WindowTest {
 protected:
  [[nodiscard]] std::vector<std::string> Heads() {
    std::vector<std::string> heads;
    for (int column = 0; column < list().model()->columnCount(); ++column) {
      heads.push_back(ToUtf8(list().model()->headerData(column, Qt::Horizontal).toString()));
    }
    return heads;
  }
  /// Types where the keyboard is.
  void Type(const char* text) {
    QTest::keyClicks(QApplication::focusWidget(), QString::fromUtf8(text));
  }
  void Press(Qt::Key key, Qt::KeyboardModifier modifier = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), key, modifier);
  }
  /// Finds by keyboard alone.
  void Find(const char* text) {
    QTest::keyClick(&window(), Qt::Key_F, Qt::ControlModifier);
    ASSERT_EQ(QApplication::focusWidget(), &pane().find().text());
    pane().find().text().setText(QString::fromUtf8(text));
    Press(Qt::Key_Return);
    Settle();
  }
  /// One step: a view is chosen from the list of views.
  void Choose(const char* view) {
    QComboBox& views = pane().find().views();
    const int index = views.findText(QString::fromUtf8(view));
    ASSERT_GE(index, 0) << view;
    views.setCurrentIndex(index);
    Q_EMIT views.activated(index);
    Settle();
  }
  void Answer(const char* answer) {
    pane().find().answer().setText(QString::fromUtf8(answer));
    pane().find().answer().setFocus();
    Press(Qt::Key_Return);
    Settle();
  }
};

// Ctrl+F, the address, Down into the list, Alt+Enter: the sheet with the quota is there.
TEST_F(Finding, ByAddressLeadsToTheSheetInFourSteps) {
  Find("vertrieb@linden-werke.example");
  EXPECT_THAT(Names(), ElementsAre("Birgit Krämer"));
  Press(Qt::Key_Down);
  EXPECT_EQ(QApplication::focusWidget(), &list());
  ASSERT_THAT(window().Selection(), SizeIs(1));
  EXPECT_EQ(window().Selection().front().dn, kBirgit);
  QTest::keyClick(&window(), Qt::Key_Return, Qt::AltModifier);
  ASSERT_TRUE(QTest::qWaitFor([this] { return window().sheets().Open().size() == 1; }, kPatience));
}

TEST_F(Finding, BeginsWhileOneTypesAndShowsTheFolder) {
  QTest::keyClick(&window(), Qt::Key_F, Qt::ControlModifier);
  Type("birgit kr");
  ASSERT_TRUE(QTest::qWaitFor(
      [this] { return Names() == std::vector<std::string>{"Birgit Krämer"}; }, kPatience));
  EXPECT_THAT(Heads(),
              ElementsAre("Name", "Type", "Folder", "Logon Name", ::testing::_, "Description"));
  EXPECT_THAT(Column(2), ElementsAre("linden-werke.example/Linden-Werke Chemnitz/Vertrieb"));
}

TEST_F(Finding, TakesAPastedListOfUsersOfDifferentUnits) {
  QApplication::clipboard()->setText(QStringLiteral(
      "j.weissflog\nBirgit Krämer <b.kraemer@linden-werke.example>\nh.oender\n"
      "\"Meyer, Anna\"\nCN=Frank Seidel,OU=Entwicklung,OU=Linden-Werke Chemnitz,DC=linden-werke,"
      "DC=example\nnobody@example.org"));
  QTest::keyClick(&window(), Qt::Key_F, Qt::ControlModifier);
  Press(Qt::Key_V, Qt::ControlModifier);
  Press(Qt::Key_Return);
  Settle();
  EXPECT_THAT(Names(), UnorderedElementsAre("Jürgen Weißflog", "Birgit Krämer", "Helga Önder",
                                            "Meyer, Anna", "Frank Seidel"));
  EXPECT_THAT(StatusTexts(), HasSubstr("1 not found: nobody@example.org"));
  KeepPicture(window(), "finding-list");
  Press(Qt::Key_Down);
  Press(Qt::Key_A, Qt::ControlModifier);
  EXPECT_THAT(window().Selection(), SizeIs(5));
  QTest::keyClick(&window(), Qt::Key_Return, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([this] { return window().sheets().Open().size() == 1; }, kPatience));
}

TEST_F(Finding, KnowsWhoHasNoMailboxInOneStep) {
  Choose("No mailbox");
  EXPECT_THAT(Names(), Contains("Ursula Fischer"));
  EXPECT_THAT(Names(), Contains("Rolf Uhlig"));
  EXPECT_THAT(Names(), Not(Contains("Birgit Krämer")));
}

TEST_F(Finding, KnowsWhoIsOver500AndSortsByNumber) {
  Choose("Own quota above");
  EXPECT_EQ(ToUtf8(pane().find().answer().text()), "500");
  EXPECT_THAT(Names(), Contains("Frank Seidel"));
  EXPECT_THAT(Names(), Not(Contains("Stefan Ebert")));
  const int hard = static_cast<int>(Heads().size()) - 1;
  list().setFocus();
  Press(static_cast<Qt::Key>(Qt::Key_1 + hard), Qt::ControlModifier);
  EXPECT_EQ(list().header()->sortIndicatorSection(), hard);
  std::vector<int> numbers;
  for (const std::string& text : Column(hard)) numbers.push_back(std::stoi(text));
  EXPECT_TRUE(std::ranges::is_sorted(numbers)) << ::testing::PrintToString(numbers);
  KeepPicture(window(), "finding-view");
  EXPECT_THAT(numbers, Contains(5000));
  EXPECT_THAT(numbers, Contains(700));
  Answer("1000");
  EXPECT_THAT(Names(), UnorderedElementsAre("Jürgen Weißflog", "Klaus Böttger", "Ines Großmann"));
  Answer("much");
  EXPECT_THAT(StatusTexts(), HasSubstr("Type a number of megabytes."));
}

TEST_F(Finding, KnowsWhoHasPop3On) {
  Choose("Feature on");
  EXPECT_EQ(ToUtf8(pane().find().answer().text()), "pop3");
  EXPECT_THAT(Names(), ElementsAre("Helga Önder"));
}

TEST_F(Finding, ShowsWhatARuleOfTheCheckFinds) {
  Choose("Check: a name of an object that is not there or was deleted");
  EXPECT_THAT(Names(), ElementsAre("Stefan Ebert"));
  EXPECT_THAT(Heads(), ElementsAre("Name", "Type", "Folder", "Field", "What Is Wrong"));
  EXPECT_THAT(Column(4), ElementsAre(HasSubstr("was deleted")));
}

TEST_F(Finding, WhatARuleFindsIsOpenedAtItsField) {
  Choose("Check: a name of an object that is not there or was deleted");
  pane().list().view().setFocus();
  pane().list().view().selectAll();
  Press(Qt::Key_Return);
  ASSERT_EQ(window().sheets().Open().size(), 1);
  const console::QtPropertySheet& sheet = *window().sheets().Open().front();
  const auto* const field = sheet.Dialog(sheet.CurrentPage())->Find(IDC_SENDAS_LIST);
  ASSERT_NE(field, nullptr);
  EXPECT_EQ(sheet.focusWidget(), &field->widget());
  // The sheet is open by now, and is led there again.
  sheet.Dialog(sheet.CurrentPage())->Find(IDC_PELORA_HIDDEN)->widget().setFocus();
  contract::Activate(window());
  pane().list().view().setFocus();
  Press(Qt::Key_Return);
  EXPECT_EQ(window().sheets().Open().size(), 1);
  EXPECT_EQ(sheet.focusWidget(), &field->widget());
}

TEST_F(Finding, EnterOnceMoreLeadsToWhatIsFoundAndWhatWasMeantIsSelected) {
  Find("vertrieb@linden-werke.example");
  ASSERT_THAT(window().Selection(), SizeIs(1));
  EXPECT_EQ(window().Selection().front().dn, kBirgit);
  EXPECT_TRUE(pane().find().text().hasFocus());
  Press(Qt::Key_Return);
  EXPECT_EQ(QApplication::focusWidget(), &list());
  Find("birgit@nowhere.example");
  EXPECT_THAT(Names(), IsEmpty());
  Find("saal");
  EXPECT_GT(Names().size(), 1U);
  EXPECT_THAT(pane().list().Selection(), IsEmpty()) << "several that were not asked for by name";
}

TEST_F(Finding, UsersBelowAContainerWithoutAnyAreSaidToBeNone) {
  pane().GoTo("OU=Groupware Servers,DC=linden-werke,DC=example");
  ASSERT_TRUE(QTest::qWaitFor([this] { return pane().Container() != nullptr; }, kPatience));
  Settle();
  list().setFocus();
  QTest::keyClick(&list(), Qt::Key_Return, Qt::ControlModifier | Qt::ShiftModifier);
  Settle();
  EXPECT_THAT(window().sheets().Open(), SizeIs(0));
  EXPECT_EQ(ToUtf8(window().statusBar()->currentMessage()),
            "There are no users below Groupware Servers.");
}

TEST_F(Finding, GoesBackToTheContainer) {
  const std::vector<std::string> before = Names();
  Find("birgit");
  EXPECT_NE(Names(), before);
  QTest::keyClick(&pane().find().text(), Qt::Key_Escape);
  Settle();
  EXPECT_EQ(Names(), before);
  EXPECT_THAT(Heads(), ElementsAre("Name", "Type", "Description"));
}

TEST_F(Finding, StaysWhereItIsWhenTheDirectoryIsReadAgain) {
  Find("birgit");
  QTest::keyClick(&window(), Qt::Key_F5);
  Settle();
  EXPECT_THAT(Names(), Contains("Birgit Krämer"));
  EXPECT_TRUE(pane().find().IsAsking());
}

TEST_F(Finding, OpensAContainerThatWasFound) {
  Find("slash in its");
  ASSERT_THAT(Names(), ElementsAre("Labor I/O"));
  Press(Qt::Key_Down);
  Press(Qt::Key_Return);
  Settle();
  ASSERT_TRUE(QTest::qWaitFor([this] { return pane().Container() != nullptr; }, kPatience));
  Settle();
  EXPECT_EQ(pane().Container()->name, "Labor I/O");
  EXPECT_THAT(Names(), Contains("Rolf Uhlig"));
}

TEST_F(Finding, CopiesRowsAndATableForTheCommandLine) {
  Find("j.weissflog");
  list().setFocus();
  list().selectAll();
  Press(Qt::Key_C, Qt::ControlModifier);
  EXPECT_THAT(ToUtf8(QApplication::clipboard()->text()),
              StartsWith("Name\tType\tFolder\tLogon Name\t"));
  EXPECT_THAT(ToUtf8(QApplication::clipboard()->text()), HasSubstr("\nJürgen Weißflog\tUser\t"));
  EXPECT_THAT(pane().list().AsCsv(), StartsWith("dn,name,type,folder,logon,mail,remark\r\n\"CN="));
}

TEST_F(Finding, RemembersColumnsOfEachView) {
  Choose("Hidden");
  QTimer::singleShot(0, [] {
    auto* dialog = dynamic_cast<console::ColumnDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    auto* columns = dialog->findChild<QListWidget*>(QStringLiteral("columns"));
    for (int row = 0; row < columns->count(); ++row) {
      const bool wanted = columns->item(row)->data(Qt::UserRole) == QStringLiteral("logon");
      columns->item(row)->setCheckState(wanted ? Qt::Checked : Qt::Unchecked);
    }
    dialog->accept();
  });
  pane().ChooseColumns();
  Settle();
  EXPECT_THAT(Heads(), ElementsAre("Name", "Logon Name"));
  list().header()->resizeSection(0, 321);
  OpenWindow();
  Choose("Hidden");
  EXPECT_THAT(Heads(), ElementsAre("Name", "Logon Name"));
  EXPECT_EQ(list().header()->sectionSize(0), 321);
  Choose("Administrators");
  EXPECT_THAT(Heads(), SizeIs(5));
}

TEST_F(Finding, KeepsTheUsersViews) {
  const session::View kept{.name = "Groups here",
                           .base = kCompany,
                           .filter = "(objectClass=group)",
                           .columns = {"name", "mail"}};
  ASSERT_EQ(ToUtf8(pane().remembered().SetViews({kept})), "");
  OpenWindow();
  EXPECT_EQ(ToUtf8(pane().ShowView(QStringLiteral("groups HERE"))), "");
  Settle();
  EXPECT_THAT(Names(), Contains("Vertrieb Alle"));
  EXPECT_EQ(pane().ShownView(), kept);
  EXPECT_THAT(ToUtf8(pane().ShowView(QStringLiteral("no such view"))),
              HasSubstr("There is no view"));
  EXPECT_EQ(ToUtf8(pane().ShowView(QStringLiteral("Own quota above=1000"))), "");
  Settle();
  EXPECT_THAT(Names(), SizeIs(3));
}

TEST_F(Finding, ComesBackToTheContainerThatWasShownLast) {
  pane().GoTo(kCompany);
  const auto is_there = [this] {
    return pane().Container() != nullptr && pane().Container()->dn == kCompany;
  };
  ASSERT_TRUE(QTest::qWaitFor(is_there, kPatience));
  Settle();
  window().close();
  OpenWindow();
  EXPECT_TRUE(QTest::qWaitFor(is_there, kPatience));
  Settle();
  EXPECT_THAT(Names(), Contains("Vertrieb"));
  // What is asked for at once is not taken for the container's.
  OpenWindow();
  EXPECT_EQ(ToUtf8(pane().ShowView(QStringLiteral("Hidden"))), "");
  EXPECT_TRUE(QTest::qWaitFor(is_there, kPatience));
  Settle();
  EXPECT_TRUE(pane().find().IsAsking());
}

TEST_F(Finding, OffersTheDirectoryThatWasShownLastAndOpensItOnlyWhenAsked) {
  window().resize(777, 555);
  window().close();
  MainWindow later(module());
  later.show();
  EXPECT_EQ(later.size(), QSize(777, 555));
  EXPECT_EQ(later.session(), nullptr);
  for (QAction* action : later.findChildren<QAction*>()) {
    if (action->text() == QStringLiteral("Open &Again: company.ldb")) action->trigger();
  }
  ASSERT_NE(later.session(), nullptr);
  EXPECT_EQ(later.session()->path, file());
}

TEST_F(Finding, OpensAFileThatIsDropped) {
  MainWindow empty(module());
  empty.show();
  const auto drop = [&empty](const QUrl& what) {
    QMimeData data;
    data.setUrls({what});
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&empty, &enter);
    if (!enter.isAccepted()) return false;
    QDropEvent event(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&empty, &event);
    return QTest::qWaitFor([&empty] { return empty.session() != nullptr; }, kPatience);
  };
  EXPECT_FALSE(drop(QUrl(QStringLiteral("https://example.org/company.ldb"))));
  EXPECT_FALSE(drop(QUrl::fromLocalFile(QStringLiteral("/etc/hosts"))));
  EXPECT_TRUE(drop(QUrl::fromLocalFile(console::ToQString(file()))));
}

TEST_F(Finding, TellsKindsOfAccountsApart) {
  std::vector<QImage> pictures;
  using enum session::ObjectMark;
  for (const auto mark : {kNone, kRoom, kEquipment, kSharedStore, kDisabled, kNoMailbox, kServer}) {
    const QImage picture =
        console::IconOf(session::ObjectIcon::kUser, mark).pixmap(16, 16).toImage();
    for (const QImage& other : pictures) EXPECT_NE(picture, other);
    pictures.push_back(picture);
    EXPECT_EQ(console::TextOf(mark).isEmpty(), mark == kNone);
  }
}

TEST_F(Finding, ScrollsAndSortsManyThousands) {
  constexpr int kMany = 20'000;
  std::vector<session::ListedObject> objects;
  for (int at = 0; at < kMany; ++at) {
    const std::string number = std::to_string((at * 7919) % kMany);
    objects.push_back(
        {.object = {.dn = "CN=" + number, .name = number, .description = {}, .kind = {}},
         .cells = {"User " + number, number}});
  }
  console::ObjectListPane many(nullptr);
  many.SetColumns(
      {{.name = "name", .title = "Name"},
       {.name = "size", .title = "Size", .order = session::ListColumn::Order::kNumber}});
  many.Gather(std::move(objects));
  many.ShowGathered();
  many.view().sortByColumn(1, Qt::DescendingOrder);
  const auto text = [&many](int row, int column) {
    return ToUtf8(many.view().model()->index(row, column).data().toString());
  };
  EXPECT_EQ(many.ShownCount(), kMany);
  EXPECT_EQ(text(0, 1), "19999");
  EXPECT_EQ(text(kMany - 1, 1), "0");
  many.view().sortByColumn(0, Qt::AscendingOrder);
  EXPECT_EQ(text(0, 0), "User 0");
  EXPECT_EQ(text(1, 0), "User 1");
  EXPECT_EQ(text(2, 0), "User 10");
}

}  // namespace
}  // namespace pelora::test
