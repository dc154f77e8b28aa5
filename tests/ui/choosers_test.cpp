// SPDX-License-Identifier: Apache-2.0
// What the console's choosers find, and what can be chosen of it.
#include "tests/ui/choosers_test.h"

#include <QApplication>
#include <QClipboard>
#include <QTest>
#include <algorithm>
#include <semaphore>

#include "hosts/console/text/qt_text.h"
#include "tests/ui/scripted_store.h"

namespace pelora::test {
namespace {

using console::QtChoosers;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::IsSupersetOf;
using ::testing::Not;

TEST_F(ChoosersTest, DistinguishedNamesAreCopiedFromWhatIsFoundAndWhatIsChosen) {
  PlaySearched([](ChooserUser& user) {
    user.Search("Helga");
    user.ClickRow("Helga Önder");
    QTest::keyClick(&user.Results(), Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(console::ToUtf8(QApplication::clipboard()->text()), kHelga);
    user.Click("Add");
    QApplication::clipboard()->clear();
    user.Chosen().setFocus();
    user.Chosen().selectAll();
    QTest::keyClick(&user.Chosen(), Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(console::ToUtf8(QApplication::clipboard()->text()), kHelga);
    EXPECT_EQ(user.Results().contextMenuPolicy(), Qt::ActionsContextMenu);
    user.Click("Cancel");
  });
  EXPECT_EQ(PickUsers(), kCancelled);
}

TEST_F(ChoosersTest, ShowsEveryObjectOfTheTypeAtOnce) {
  PlaySearched([](ChooserUser& user) {
    EXPECT_EQ(user.Title(), "Select Users");
    EXPECT_THAT(user.Names(), IsSupersetOf({"Birgit Krämer", "Meyer, Anna", "林田 美咲"}));
    EXPECT_THAT(user.Names(), Not(Contains("Vertrieb Alle")));
    EXPECT_THAT(user.Names(), Not(Contains("mail01")));
    EXPECT_EQ(user.Status(), std::to_string(user.Names().size()) + " objects found.");
    user.Click("Cancel");
  });
  EXPECT_EQ(PickUsers(), kCancelled);
  EXPECT_THAT(names_, ElementsAre("from before"));
}

TEST_F(ChoosersTest, EverySetUpHasItsTitleAndObjects) {
  const auto expect = [this](const char* title, const char* among, const char* missing) {
    PlaySearched([=](ChooserUser& user) {
      EXPECT_EQ(user.Title(), title);
      EXPECT_THAT(user.Names(), Contains(among));
      EXPECT_THAT(user.Names(), Not(Contains(missing)));
      user.Click("Cancel");
    });
  };
  expect("Select Users or Groups", "Rundschreiben", "mail01");
  EXPECT_EQ(chooser_.SelectUsersAndGroups(nullptr, names_, SelectionMode::kMultiple), kCancelled);
  expect("Select Group", "Rundschreiben", "Birgit Krämer");
  EXPECT_EQ(chooser_.SelectGroups(nullptr, names_, SelectionMode::kSingle), kCancelled);
  expect("Select Computer", "mail01", "Birgit Krämer");
  EXPECT_EQ(chooser_.SelectComputers(nullptr, names_, SelectionMode::kSingle), kCancelled);
  expect("Select Containers", "Labor I/O", "Birgit Krämer");
  EXPECT_EQ(chooser_.SelectContainers(nullptr, names_, SelectionMode::kMultiple), kCancelled);
}

TEST_F(ChoosersTest, RowsTellWhatAndWhereAnObjectIs) {
  Play([](ChooserUser& user) {
    user.Search("b.kraemer");
    EXPECT_THAT(user.Names(), ElementsAre("Birgit Krämer"));
    EXPECT_THAT(user.Column(1), ElementsAre("User"));
    EXPECT_THAT(user.Column(2), ElementsAre("b.kraemer"));
    EXPECT_THAT(user.Column(3), ElementsAre("b.kraemer@linden-werke.example"));
    EXPECT_THAT(user.Column(4), ElementsAre("linden-werke.example/Linden-Werke Chemnitz/Vertrieb"));
    EXPECT_EQ(user.Status(), "1 object found.");
    user.Click("Cancel");
  });
  EXPECT_EQ(PickUsers(), kCancelled);
}

TEST_F(ChoosersTest, TypingSearchesByItself) {
  QtChoosers quick(*session().store, session().open_another,
                   {.limit = 1000, .typing_pause = std::chrono::milliseconds(1)});
  const console::ConsolePlatform platform(session().service, message_box_, quick, module());
  PlaySearched([](ChooserUser& user) {
    user.Type("kraemer@");
    EXPECT_TRUE(QTest::qWaitFor([&] { return user.Status() == "1 object found."; }, 20000));
    EXPECT_THAT(user.Names(), ElementsAre("Birgit Krämer"));
    user.Type("nobody has such a name");
    EXPECT_TRUE(QTest::qWaitFor([&] { return user.Status() == "Nothing was found."; }, 20000));
    EXPECT_THAT(user.Names(), IsEmpty());
    EXPECT_FALSE(user.Button("OK").isEnabled());
    user.Press(Qt::Key_Down);
    EXPECT_TRUE(user.Text().hasFocus()) << "there is nothing to go to";
    user.Click("Cancel");
  });
  EXPECT_EQ(
      SelectADObject(platform.platform()).SelectUsers(nullptr, names_, SelectionMode::kSingle),
      kCancelled);
}

TEST_F(ChoosersTest, ObjectsComeInTheOrderInWhichTheyWereChosen) {
  Play([](ChooserUser& user) {
    user.Search("kraemer");
    user.ClickRow("Birgit Krämer");
    user.Click("Add");
    user.Search("meyer");
    user.DoubleClickRow("Meyer, Anna");
    EXPECT_THAT(user.ChosenNames(), ElementsAre("Birgit Krämer", "Meyer, Anna"));
    user.Search("uhlig");
    user.ClickRow("Rolf Uhlig");
    user.Click("OK");
  });
  EXPECT_EQ(PickUsers(), S_OK);
  EXPECT_THAT(names_, ElementsAre(kBirgit, kAnna, kRolf));
}

TEST_F(ChoosersTest, SelectedRowsNeedNoList) {
  PlaySearched([](ChooserUser& user) {
    EXPECT_FALSE(user.Button("OK").isEnabled());
    user.ClickRow("Rolf Uhlig");
    user.ClickRow("Birgit Krämer", Qt::ControlModifier);
    EXPECT_TRUE(user.Button("OK").isEnabled());
    user.Click("OK");
  });
  EXPECT_EQ(PickUsers(), S_OK);
  EXPECT_THAT(names_, ElementsAre(kBirgit, kRolf)) << "as shown";
}

TEST_F(ChoosersTest, AnObjectIsChosenOnceAndCanBeTakenOutAgain) {
  Play([](ChooserUser& user) {
    user.Search("kraemer");
    user.ClickRow("Birgit Krämer");
    user.Click("Add");
    EXPECT_FALSE(user.Button("Add").isEnabled());
    user.DoubleClickRow("Birgit Krämer");
    EXPECT_THAT(user.ChosenNames(), ElementsAre("Birgit Krämer"));
    EXPECT_FALSE(user.Button("Remove").isEnabled());
    user.Chosen().setFocus();
    user.Chosen().setCurrentRow(0);
    EXPECT_TRUE(user.Button("Remove").isEnabled());
    user.Press(Qt::Key_Delete);
    EXPECT_THAT(user.ChosenNames(), IsEmpty());
    EXPECT_FALSE(user.Button("OK").isEnabled());
    user.Search("uhlig");
    user.ClickRow("Rolf Uhlig");
    user.Click("OK");
  });
  EXPECT_EQ(PickUsers(), S_OK);
  EXPECT_THAT(names_, ElementsAre(kRolf));
}

TEST_F(ChoosersTest, ASingleObjectIsTakenByADoubleClick) {
  PlaySearched([](ChooserUser& user) {
    EXPECT_EQ(user.Title(), "Select User");
    EXPECT_EQ(user.Results().selectionMode(), QAbstractItemView::SingleSelection);
    user.DoubleClickRow("Birgit Krämer");
  });
  EXPECT_EQ(PickUsers(SelectionMode::kSingle), S_OK);
  EXPECT_THAT(names_, ElementsAre(kBirgit));
}

TEST_F(ChoosersTest, KeysAloneChooseAnObject) {
  Play([](ChooserUser& user) {
    EXPECT_TRUE(QTest::qWaitFor([&] { return user.Text().hasFocus(); }, 20000));
    QTest::keyClicks(&user.Text(), QStringLiteral("vogel"));
    user.Press(Qt::Key_Return);
    user.WaitForSearch();
    user.Press(Qt::Key_Down);
    EXPECT_TRUE(user.Results().hasFocus());
    EXPECT_EQ(user.Names().size(), 1U);
    user.Press(Qt::Key_Return);
  });
  EXPECT_EQ(PickUsers(SelectionMode::kSingle), S_OK);
  ASSERT_EQ(names_.size(), 1U);
  EXPECT_THAT(names_.front(), HasSubstr("CN=Karin Vogel,OU=Labor I/O,"));
}

TEST_F(ChoosersTest, APastedListIsSelectedWholeAndWhatIsMissingIsNamed) {
  QApplication::clipboard()->setText(
      QStringLiteral("j.weissflog\nnobody@example.org\n"
                     "Birgit Krämer <b.kraemer@linden-werke.example>"));
  Play([](ChooserUser& user) {
    user.Text().setFocus();
    QTest::keyClick(&user.Text(), Qt::Key_V, Qt::ControlModifier);
    user.Press(Qt::Key_Return);
    user.WaitForSearch();
    EXPECT_THAT(user.Names(), ElementsAre("Birgit Krämer", "Jürgen Weißflog"));
    EXPECT_EQ(user.Status(), "2 objects found, 1 not found: nobody@example.org.");
    user.Click("Add");
    user.Search("kraemer birgit");
    EXPECT_THAT(user.Names(), ElementsAre("Birgit Krämer")) << "all words, in any order";
    EXPECT_FALSE(user.Button("Add").isEnabled()) << "words select nothing";
    user.Click("OK");
  });
  EXPECT_EQ(PickUsers(), S_OK);
  EXPECT_THAT(names_, ::testing::UnorderedElementsAre(HasSubstr("CN=Birgit Krämer"),
                                                      HasSubstr("CN=Jürgen Weißflog")));
}

TEST_F(ChoosersTest, KeysAloneChooseSeveralObjects) {
  Play([](ChooserUser& user) {
    user.Search("fertigung");
    user.Press(Qt::Key_Return);
    EXPECT_TRUE(user.Results().hasFocus()) << "Enter goes on to what was found";
    user.Press(Qt::Key_Return);
    user.Press(Qt::Key_Down);
    user.Press(Qt::Key_Return);
    EXPECT_THAT(user.ChosenNames(), ElementsAre("Fertigung Schicht 1", "Fertigung Schicht 2"));
    user.Button("OK").setFocus();
    user.Press(Qt::Key_Space);
  });
  EXPECT_EQ(chooser_.SelectGroups(nullptr, names_, SelectionMode::kMultiple), S_OK);
  EXPECT_EQ(names_.size(), 2U);
}

TEST_F(ChoosersTest, EscapeCancels) {
  PlaySearched([](ChooserUser& user) {
    user.ClickRow("Birgit Krämer");
    user.Press(Qt::Key_Escape);
  });
  EXPECT_EQ(PickUsers(), kCancelled);
  EXPECT_THAT(names_, ElementsAre("from before"));
}

TEST_F(ChoosersTest, ComputersGiveTheirShortNames) {
  PlaySearched([](ChooserUser& user) { user.DoubleClickRow("mail02"); });
  EXPECT_EQ(chooser_.SelectComputers(nullptr, names_, SelectionMode::kSingle), S_OK);
  EXPECT_THAT(names_, ElementsAre("mail02"));
}

TEST_F(ChoosersTest, ContainersGiveTheirNamesAsTheDirectoryWritesThem) {
  Play([](ChooserUser& user) {
    user.Search("labor");
    user.ClickRow("Labor I/O");
    user.Click("Add");
    user.Search("vertrieb");
    user.ClickRow("Vertrieb");
    user.Click("OK");
  });
  EXPECT_EQ(chooser_.SelectContainers(nullptr, names_, SelectionMode::kMultiple), S_OK);
  EXPECT_THAT(names_, ElementsAre("OU=Labor I/O,OU=Entwicklung,OU=Linden-Werke Chemnitz,"
                                  "DC=linden-werke,DC=example",
                                  kSales));
}

TEST_F(ChoosersTest, ASingleContainerIsAskedForAsOne) {
  PlaySearched([](ChooserUser& user) {
    EXPECT_EQ(user.Title(), "Select Container");
    EXPECT_THAT(user.Names(), Contains("linden-werke.example")) << "as in the tree";
    user.DoubleClickRow("Builtin");
  });
  EXPECT_EQ(chooser_.SelectContainers(nullptr, names_, SelectionMode::kSingle), S_OK);
  EXPECT_THAT(names_, ElementsAre("CN=Builtin,DC=linden-werke,DC=example"));
}

TEST_F(ChoosersTest, HiddenContainersAreLeftOutUnlessAskedFor) {
  ModifyEntry(file(), std::string("dn: ") + kSales +
                          "\nchangetype: modify\nadd: showInAdvancedViewOnly\n"
                          "showInAdvancedViewOnly: TRUE\n");
  constexpr std::uint32_t kShowHidden = 0x4;
  for (const bool hidden_too : {false, true}) {
    std::unique_ptr<ICommonQuery> query;
    ASSERT_EQ(choosers_.CreateCommonQuery(query), S_OK);
    PlaySearched([hidden_too](ChooserUser& user) {
      EXPECT_THAT(user.Names(), Contains("Labor I/O"));
      EXPECT_EQ(std::ranges::count(user.Names(), "Vertrieb"), hidden_too ? 1 : 0);
      user.Click("Cancel");
    });
    Ref<IDataObject> chosen;
    QueryWindowInit init;
    init.handler_flags = hidden_too ? kShowHidden : 0;
    EXPECT_EQ(query->OpenQueryWindow(nullptr, init, chosen), S_FALSE);
  }
}

TEST_F(ChoosersTest, AddressesHaveColumnsWhereThereMayBeSome) {
  const auto expect = [this](const char* typed, bool shown) {
    Play([=](ChooserUser& user) {
      EXPECT_EQ(user.Text().placeholderText().toStdString(), typed);
      EXPECT_EQ(user.Results().isColumnHidden(2), !shown) << "logon name";
      EXPECT_EQ(user.Results().isColumnHidden(3), !shown) << "mail address";
      EXPECT_FALSE(user.Results().isColumnHidden(4)) << "folder";
      user.Click("Cancel");
    });
  };
  expect("Names, addresses, a pasted list", true);
  EXPECT_EQ(PickUsers(), kCancelled);
  expect("Part of a name", false);
  EXPECT_EQ(chooser_.SelectComputers(nullptr, names_, SelectionMode::kSingle), kCancelled);
  expect("Part of a name", false);
  EXPECT_EQ(chooser_.SelectContainers(nullptr, names_, SelectionMode::kSingle), kCancelled);
}

TEST_F(ChoosersTest, TheLimitIsStated) {
  QtChoosers few(*session().store, session().open_another, {.limit = 3});
  const console::ConsolePlatform platform(session().service, message_box_, few, module());
  PlaySearched([](ChooserUser& user) {
    EXPECT_EQ(user.Names().size(), 3U);
    EXPECT_EQ(user.Status(),
              "3 objects are shown and there are more. Type more of the name to narrow the "
              "search.");
    user.Click("Cancel");
  });
  EXPECT_EQ(
      SelectADObject(platform.platform()).SelectUsers(nullptr, names_, SelectionMode::kSingle),
      kCancelled);
}

TEST_F(ChoosersTest, TheWindowLivesWhileTheSearchGoesOn) {
  std::binary_semaphore gate(0);
  QtChoosers slow(*session().store, OpenScripted([&gate](const auto&, const ldap::EntrySink& sink) {
    sink(UserEntry("Ada"));
    gate.acquire();
    return ldap::StoreStatus{};
  }));
  const console::ConsolePlatform platform(session().service, message_box_, slow, module());
  Play([&gate](ChooserUser& user) {
    EXPECT_TRUE(QTest::qWaitFor([&] { return !user.Names().empty(); }, 20000));
    EXPECT_EQ(user.Status(), "Searching... 1 object so far.");
    user.ClickRow("Ada");
    EXPECT_TRUE(user.Button("OK").isEnabled());
    gate.release();
    user.WaitForSearch();
    EXPECT_THAT(user.Names(), ElementsAre("Ada"));
    user.Click("Cancel");
  });
  EXPECT_EQ(
      SelectADObject(platform.platform()).SelectUsers(nullptr, names_, SelectionMode::kSingle),
      kCancelled);
}

TEST_F(ChoosersTest, AFailedSearchIsShown) {
  QtChoosers broken(*session().store,
                    [](std::unique_ptr<ldap::IDirectoryStore>& /*store*/, const auto& /*stop*/) {
                      return ldap::StoreStatus{-1, "the <b>server</b> is down"};
                    });
  const console::ConsolePlatform platform(session().service, message_box_, broken, module());
  PlaySearched([](ChooserUser& user) {
    EXPECT_EQ(user.StatusFormat(), Qt::PlainText) << "what a server says is no markup";
    EXPECT_EQ(user.Status(),
              "The search failed, 0 objects found until then: the <b>server</b> is down");
    user.Click("Cancel");
  });
  EXPECT_EQ(
      SelectADObject(platform.platform()).SelectUsers(nullptr, names_, SelectionMode::kSingle),
      kCancelled);
}

}  // namespace
}  // namespace pelora::test
