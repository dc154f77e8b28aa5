// SPDX-License-Identifier: Apache-2.0
// The console's window and the domain's servers: which one is worked with, and what becomes of the
// window when one is gone, or hangs.
#include <gmock/gmock.h>

#include <QTimer>
#include <chrono>

#include "tests/lab/console/domain_console.h"

namespace pelora::test {
namespace {

using console::MainWindow;
using console::ToUtf8;
using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

/// Long before a server that hangs is given up.
constexpr std::chrono::seconds kAtOnce{10};

class DomainConnection : public DomainConsole {};

TEST_F(DomainConnection, AServerThatWasFoundIsFoundAnewTheNextTime) {
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

TEST_F(DomainConnection, FindsAServerOfTheTicketsDomain) {
  Connect({});
  EXPECT_EQ(ToUtf8(window().windowTitle()), lab::Server() + " - Pelora Console");
  EXPECT_THAT(Names(), Contains("Linden"));
}

TEST_F(DomainConnection, AServerThatFallsAsleepHoldsUpNobody) {
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

TEST_F(DomainConnection, WithoutTicketItSaysHowToGetOne) {
  const lab::EnvironmentVariable tickets("KRB5CCNAME", "FILE:/nonexistent");
  ExpectMessage();
  window().OpenServerBesides(console::ToQString(lab::Server()));
  const std::string message = NextMessage();
  EXPECT_THAT(message, HasSubstr("dc1.pelora.test cannot be opened."));
  EXPECT_THAT(message, HasSubstr("no Kerberos ticket"));
  EXPECT_THAT(message, HasSubstr("kinit"));
  EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(DomainConnection, AServerThatIsGoneIsToldAndReadAgainWhenItIsBack) {
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

TEST_F(DomainConnection, AServerThatHangsHoldsNeitherTheWindowNorItsEnd) {
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

TEST_F(DomainConnection, TheConnectionIsTold) {
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

TEST_F(DomainConnection, AnOpeningThatHangsHoldsNeitherTheWindowNorItsEnd) {
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

TEST_F(DomainConnection, AListingThatWasStoppedWhileTheServerHungIsReadWhenItAnswers) {
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

TEST_F(DomainConnection, ASecondRefreshStaysWhereTheFirstWasGoing) {
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

}  // namespace
}  // namespace pelora::test
