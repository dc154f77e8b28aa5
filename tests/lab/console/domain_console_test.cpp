// SPDX-License-Identifier: Apache-2.0
// The console's window on a domain.
#include <gmock/gmock.h>

#include <QAction>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <chrono>

#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/main_window.h"
#include "hosts/session/own_pages/account_time.h"
#include "hosts/session/own_pages/own_page_ids.h"
#include "resources/resource.h"
#include "server/class_table.h"
#include "server/guid_text.h"
#include "tests/contract/dialog_contract_qt_player.h"
#include "tests/lab/lab.h"
#include "tests/lab/lab_administrator.h"
#include "tests/ui/console_test.h"

namespace pelora::test {
namespace {

using console::MainWindow;
using console::ToUtf8;
using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::IsSupersetOf;
using ::testing::Not;
using ::testing::StartsWith;

constexpr int kPatience = 60000;

std::string AdaDn() { return "CN=Ada Brandt,OU=Linden," + lab::Base(); }

/// Long before a server that hangs is given up.
constexpr std::chrono::seconds kAtOnce{10};

class DomainConsole : public ConsoleTest {
 protected:
  DomainConsole() : window_(std::make_unique<MainWindow>(module())) { window_->show(); }

  /// Connects and waits until the domain is shown.
  void Connect(const std::string& server = lab::Server()) {
    bool shown = false;
    window_->OpenServerBesides(console::ToQString(server), [&shown] { shown = true; });
    EXPECT_TRUE(QTest::qWaitFor([&] { return shown; }, kPatience));
    Settle();
  }
  void Settle() {
    QCoreApplication::processEvents();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !window_->IsReading(); }, kPatience));
  }
  [[nodiscard]] QTreeView& list() {
    return *window_->findChild<QTreeView*>(QStringLiteral("object_list"));
  }
  [[nodiscard]] std::vector<std::string> Names() {
    std::vector<std::string> names;
    for (int row = 0; row < list().model()->rowCount(); ++row) {
      names.push_back(ToUtf8(list().model()->index(row, 0).data().toString()));
    }
    return names;
  }
  void DoubleClick(const char* name) {
    BeginDoubleClick(name);
    Settle();
  }
  /// Waits for nothing that follows.
  void BeginDoubleClick(const char* name) {
    const auto rows = list().model()->match(list().model()->index(0, 0), Qt::DisplayRole,
                                            QString::fromUtf8(name), 1, Qt::MatchExactly);
    ASSERT_FALSE(rows.isEmpty()) << name;
    list().scrollTo(rows.first());
    const QPoint place = list().visualRect(rows.first()).center();
    QTest::mouseClick(list().viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QTest::mouseDClick(list().viewport(), Qt::LeftButton, Qt::NoModifier, place);
  }
  [[nodiscard]] QList<console::QtPropertySheet*> Sheets() { return window_->sheets().Open(); }
  void Trigger(const char* text) {
    for (QAction* action : window_->findChildren<QAction*>()) {
      if (action->text() == QString::fromLatin1(text)) action->trigger();
    }
  }
  void Refresh() { Trigger("&Refresh"); }
  /// Waits for the next message, closes it and gives its text.
  [[nodiscard]] std::string NextMessage() {
    QCoreApplication::processEvents();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !told_.empty(); }, kPatience));
    return std::exchange(told_, {});
  }
  void ExpectMessage() {
    modal_scripts().Add([this](QWidget& box) {
      told_ = ToUtf8(qobject_cast<QMessageBox*>(&box)->text()) + " " +
              ToUtf8(qobject_cast<QMessageBox*>(&box)->informativeText());
      box.close();
    });
  }
  [[nodiscard]] MainWindow& window() { return *window_; }
  /// Closes the window and ends it, as the program does at its end.
  void EndWindow() {
    EXPECT_TRUE(window_->close());
    window_.reset();
  }

 private:
  std::string told_;
  std::unique_ptr<MainWindow> window_;
};

TEST_F(DomainConsole, AServerThatWasFoundIsFoundAnewTheNextTime) {
  const auto again = [](MainWindow& window) {
    for (QAction* action : window.findChildren<QAction*>()) {
      if (action->text().startsWith(QStringLiteral("Open &Again"))) return action;
    }
    throw std::runtime_error("nothing is opened again");
  };
  Connect("");
  EXPECT_EQ(ToUtf8(window().windowTitle()), lab::Server() + " - Pelora Console");
  EndWindow();
  {
    MainWindow next(module());
    EXPECT_EQ(ToUtf8(again(next)->text()), "Open &Again: PELORA.TEST");
    bool is_shown = false;
    next.OpenServerBesides(console::ToQString(lab::Server()), [&] { is_shown = true; });
    EXPECT_TRUE(QTest::qWaitFor([&] { return is_shown; }, kPatience));
    EXPECT_TRUE(next.close());
  }
  // One that was named is that one.
  MainWindow last(module());
  EXPECT_EQ(ToUtf8(again(last)->text()), "Open &Again: " + lab::Server());
}

TEST_F(DomainConsole, ShowsWhatADomainHolds) {
  Connect();
  EXPECT_EQ(ToUtf8(window().windowTitle()), lab::Server() + " - Pelora Console");
  EXPECT_THAT(Names(),
              IsSupersetOf({"Builtin", "Computers", "Domain Controllers", "Linden", "Users"}));
  EXPECT_THAT(Names(), Not(Contains("System"))) << "for an advanced view only";
}

TEST_F(DomainConsole, SaysAsWhomOneWorksAndWhere) {
  const lab::EnvironmentVariable tickets("KRB5CCNAME", lab::TicketsOf(lab::kHelper));
  Connect();
  const auto* who = window().findChild<QLabel*>(QStringLiteral("who"));
  EXPECT_THAT(ToUtf8(who->text()), ::testing::StartsWith("helper@"));
  EXPECT_THAT(ToUtf8(who->text()), ::testing::EndsWith(" on " + lab::Server()));
}

TEST_F(DomainConsole, FindsAServerOfTheTicketsDomain) {
  Connect({});
  EXPECT_EQ(ToUtf8(window().windowTitle()), lab::Server() + " - Pelora Console");
  EXPECT_THAT(Names(), Contains("Linden"));
}

TEST_F(DomainConsole, AServerThatFallsAsleepHoldsUpNobody) {
  Connect();
  DoubleClick("Linden");
  lab::RunningServer server;
  server.Pause();
  int turns = 0;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, [&turns] { ++turns; });
  timer.start(1);
  modal_scripts().Add([&turns](QWidget& waiting) {
    EXPECT_EQ(waiting.objectName(), QStringLiteral("errand"));
    const int before = turns;
    EXPECT_TRUE(QTest::qWaitFor([&] { return turns > before + 50; }, kPatience));
    QTest::keyClick(&waiting, Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !waiting.isVisible(); }, kPatience));
  });
  const auto begin = std::chrono::steady_clock::now();
  DoubleClick("Ada Brandt");
  EXPECT_LT(std::chrono::steady_clock::now() - begin, kAtOnce);
  EXPECT_THAT(Sheets(), IsEmpty());
  server.Resume();
  DoubleClick("Ada Brandt");
  ASSERT_EQ(Sheets().size(), 1);
  EXPECT_EQ(Sheets().front()->PageCount(), 5U);
}

TEST_F(DomainConsole, AUserIsChangedAndNothingElse) {
  Connect();
  DoubleClick("Linden");
  EXPECT_THAT(Names(), ElementsAre("Ada Brandt", "Berta Önder", "Carla Weiß, Dr."));
  DoubleClick("Ada Brandt");
  ASSERT_EQ(Sheets().size(), 1);
  const lab::Attributes before = lab::LabAdministrator().Stored(AdaDn());
  contract::QtPlayer user(*Sheets().front());
  user.Click(IDC_PELORA_HIDDEN);
  Sheets().front()->ApplyButton().click();
  lab::Attributes expected = before;
  expected["peloraHidden"] = {"1"};
  EXPECT_EQ(lab::LabAdministrator().Stored(AdaDn()), expected);
  EXPECT_THAT(lab::LdapSearch(AdaDn(), {"peloraHidden"}), ElementsAre("peloraHidden: 1"));
}

/// A user of the test's own, who is gone when it ends.
class OwnUser {
 public:
  explicit OwnUser(const std::string& name) : dn_("CN=" + name + ",OU=Linden," + lab::Base()) {
    administrator_.Add(dn_, {{"objectClass", {"user"}}, {"sAMAccountName", {name}}});
  }
  ~OwnUser() { administrator_.Remove(dn_); }
  OwnUser(const OwnUser&) = delete;
  OwnUser& operator=(const OwnUser&) = delete;

  void Set(const std::string& attribute, const std::string& value) {
    administrator_.Set(dn_, attribute, {value});
  }
  /// The only value of an attribute; empty when it is not set.
  [[nodiscard]] std::string Has(const std::string& attribute) {
    const std::vector<std::string> values = administrator_.Stored(dn_)[attribute];
    return values.empty() ? std::string() : values.front();
  }

 private:
  lab::LabAdministrator administrator_;
  std::string dn_;
};

TEST_F(DomainConsole, AnAccountIsEnabledAndItsPasswordToBeChanged) {
  OwnUser otto("Otto");
  otto.Set("pwdLastSet", "-1");
  otto.Set("userAccountControl", "546");
  Connect();
  DoubleClick("Linden");
  DoubleClick("Otto");
  ASSERT_EQ(Sheets().size(), 1);
  console::QtPropertySheet& sheet = *Sheets().front();
  sheet.SelectPage(3);
  console::QtDialog& page = *sheet.Dialog(3);
  contract::QtPlayer user(page.widget());
  EXPECT_EQ(page.Check(IDC_OWN_ENABLED), CheckState::kUnchecked);
  EXPECT_EQ(page.Check(IDC_OWN_MUST_CHANGE), CheckState::kUnchecked);
  for (const ControlId box : {IDC_OWN_ENABLED, IDC_OWN_MUST_CHANGE}) {
    user.Click(box);
  }
  user.Type(IDC_OWN_LAST_DAY, "2131-12-31");
  sheet.ApplyButton().click();
  EXPECT_EQ(otto.Has("userAccountControl"), "544");
  EXPECT_EQ(otto.Has("pwdLastSet"), "0");
  EXPECT_EQ(otto.Has("accountExpires"),
            std::to_string(session::EndOfLastDay("2131-12-31").value()));
  EXPECT_FALSE(sheet.ApplyButton().isEnabled());
  // The directory puts the time where it is told that the password is good; the page goes on.
  user.Click(IDC_OWN_MUST_CHANGE);
  sheet.ApplyButton().click();
  EXPECT_GT(otto.Has("pwdLastSet").size(), 10U);
  user.Click(IDC_OWN_MUST_CHANGE);
  user.Erase(IDC_OWN_LAST_DAY);
  sheet.ApplyButton().click();
  EXPECT_EQ(otto.Has("pwdLastSet"), "0");
  EXPECT_EQ(otto.Has("accountExpires"), std::to_string(session::kNeverEnds));
  EXPECT_FALSE(sheet.ApplyButton().isEnabled());
}

TEST_F(DomainConsole, NamesWithSpecialCharactersAreOpened) {
  Connect();
  DoubleClick("Linden");
  DoubleClick("Carla Weiß, Dr.");
  ASSERT_EQ(Sheets().size(), 1);
  EXPECT_EQ(ToUtf8(Sheets().front()->windowTitle()), "Carla Weiß, Dr. Properties");
}

TEST_F(DomainConsole, TabsAreThoseOfTheDisplaySpecifiers) {
  lab::LabAdministrator administrator;
  const std::string specifier =
      "CN=user-Display,CN=409,CN=DisplaySpecifiers,CN=Configuration," + lab::Base();
  const lab::Attributes before = administrator.Stored(specifier);
  administrator.Set(specifier, "adminPropertyPages",
                    {"22," + GuidText(FindClass("CPropPageUser")->class_id),
                     "21," + GuidText(FindClass("CPropPageFeatures")->class_id)});
  Connect();
  DoubleClick("Linden");
  DoubleClick("Ada Brandt");
  ASSERT_EQ(Sheets().size(), 1);
  std::vector<std::string> titles;
  const auto* tabs = Sheets().front()->findChild<QTabWidget*>();
  for (int tab = 0; tab < tabs->count(); ++tab) titles.push_back(ToUtf8(tabs->tabText(tab)));
  EXPECT_THAT(titles, ElementsAre("Pelora Features", "Pelora", "General", "Account", "Member Of"));
  administrator.Set(specifier, "adminPropertyPages", before.at("adminPropertyPages"));
}

TEST_F(DomainConsole, WithoutTicketItSaysHowToGetOne) {
  const lab::EnvironmentVariable tickets("KRB5CCNAME", "FILE:/nonexistent");
  ExpectMessage();
  window().OpenServerBesides(console::ToQString(lab::Server()));
  const std::string message = NextMessage();
  EXPECT_THAT(message, HasSubstr("dc1.pelora.test cannot be opened."));
  EXPECT_THAT(message, HasSubstr("no Kerberos ticket"));
  EXPECT_THAT(message, HasSubstr("kinit"));
  EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(DomainConsole, AServerThatIsGoneIsToldAndReadAgainWhenItIsBack) {
  Connect();
  DoubleClick("Linden");
  const std::vector<std::string> names = Names();
  lab::RunningServer server;
  server.Kill();
  // Neither the tree nor the list can be read, which is said once.
  ExpectMessage();
  Refresh();
  EXPECT_THAT(NextMessage(), HasSubstr("cannot be read."));
  Settle();
  server.Start();
  Refresh();
  Settle();
  EXPECT_THAT(window().Selection(), ::testing::SizeIs(1));
  EXPECT_FALSE(Names().empty());
}

TEST_F(DomainConsole, AServerThatHangsHoldsNeitherTheWindowNorItsEnd) {
  Connect();
  lab::RunningServer server;
  server.Pause();
  const auto begin = std::chrono::steady_clock::now();
  BeginDoubleClick("Linden");
  QTest::qWait(1'200);
  EXPECT_TRUE(window().IsReading());
  Trigger("&Stop");
  EXPECT_FALSE(window().IsReading());
  // Now the tree waits, and the list tries another connection.
  Refresh();
  QTest::qWait(200);
  EXPECT_TRUE(window().IsReading());
  EndWindow();
  EXPECT_LT(std::chrono::steady_clock::now() - begin, kAtOnce);
}

TEST_F(DomainConsole, TheConnectionIsTold) {
  Connect();
  std::string told;
  modal_scripts().Add([&told](QWidget& box) {
    EXPECT_EQ(box.objectName(), QStringLiteral("connection_box"));
    told = console::ToUtf8(qobject_cast<QMessageBox*>(&box)->informativeText());
    box.close();
  });
  Trigger("&Connection...");
  EXPECT_THAT(told, AllOf(StartsWith("Server: " + lab::Server() + "\nChosen: it was named\n"),
                          HasSubstr("\nWriting: it takes changes\n"),
                          HasSubstr("\nSealing: Kerberos, 256 bits\n")));
}

TEST_F(DomainConsole, AnOpeningThatHangsHoldsNeitherTheWindowNorItsEnd) {
  lab::RunningServer server;
  server.Pause();
  const auto begin = std::chrono::steady_clock::now();
  window().OpenServerBesides(console::ToQString(lab::Server()));
  QTest::qWait(200);
  Trigger("&Stop");
  window().OpenServerBesides(console::ToQString(lab::Server()));
  QTest::qWait(200);
  EndWindow();
  EXPECT_LT(std::chrono::steady_clock::now() - begin, kAtOnce);
}

TEST_F(DomainConsole, AListingThatWasStoppedWhileTheServerHungIsReadWhenItAnswers) {
  Connect();
  lab::RunningServer server;
  server.Pause();
  BeginDoubleClick("Linden");
  QTest::qWait(200);
  EXPECT_TRUE(window().IsReading());
  Trigger("&Stop");
  EXPECT_THAT(Names(), IsEmpty());
  server.Resume();
  Refresh();
  Settle();
  EXPECT_THAT(Names(), ElementsAre("Ada Brandt", "Berta Önder", "Carla Weiß, Dr."));
}

TEST_F(DomainConsole, ASecondRefreshStaysWhereTheFirstWasGoing) {
  Connect();
  DoubleClick("Linden");
  lab::RunningServer server;
  server.Pause();
  Refresh();
  Refresh();
  server.Resume();
  Settle();
  EXPECT_THAT(Names(), ElementsAre("Ada Brandt", "Berta Önder", "Carla Weiß, Dr."));
}

TEST_F(DomainConsole, ADelegatedUserMayUseWhatHeMayChangeAndIsToldOfTheRest) {
  // Whoever is signed in may change this one attribute of this one user.
  constexpr const char* kHiddenOfTheSchema = "d4c40c79-ea86-4f53-86ab-ee5c3e0085bf";
  (void)lab::OutputOf("samba-tool dsacl set --use-kerberos=required -H ldap://" + lab::Server() +
                      " --action=allow --objectdn='" + AdaDn() + "' --sddl='(OA;;WP;" +
                      kHiddenOfTheSchema + ";;AU)' 2>&1");
  const lab::EnvironmentVariable tickets("KRB5CCNAME", lab::TicketsOf(lab::kHelper));
  Connect();
  DoubleClick("Linden");
  DoubleClick("Ada Brandt");
  ASSERT_EQ(Sheets().size(), 1);
  const auto widget = [this](ControlId id) -> QWidget& {
    return Sheets().front()->Dialog(0)->Find(id)->widget();
  };
  EXPECT_TRUE(widget(IDC_PELORA_HIDDEN).isEnabled());
  EXPECT_FALSE(widget(IDC_PELORA_ACCOUNT).isEnabled());
  EXPECT_THAT(ToUtf8(widget(IDC_PELORA_ACCOUNT).toolTip()),
              HasSubstr("You have no right to change this."));
  const bool was_hidden =
      Sheets().front()->Dialog(0)->Check(IDC_PELORA_HIDDEN) == CheckState::kChecked;
  contract::QtPlayer user(*Sheets().front());
  user.Click(IDC_PELORA_HIDDEN);
  Sheets().front()->accept();
  EXPECT_THAT(Sheets(), IsEmpty());
  EXPECT_THAT(lab::LdapSearch(AdaDn(), {"peloraHidden"}),
              ElementsAre(was_hidden ? "peloraHidden: 0" : "peloraHidden: 1"));
}

}  // namespace
}  // namespace pelora::test
