// SPDX-License-Identifier: Apache-2.0
// Connections that are lost, servers that hang, and what becomes of the requests under way.
#include <gtest/gtest.h>

#include <limits>
#include <thread>

#include "tests/lab/full_listener.h"
#include "tests/lab/lab_test.h"
#include "tests/lab/ldap_stand_in.h"

namespace pelora::lab {
namespace {

using Clock = std::chrono::steady_clock;

/// Whether something took as long as it was to wait, and did not wait anew for each part of a
/// request. Which wait it was is said by the messages: a busy machine takes longer for the rest.
class Stopwatch {
 public:
  [[nodiscard]] bool WaitedFor(std::chrono::milliseconds wait) const {
    const auto passed = Clock::now() - begin_;
    return passed >= wait - std::chrono::milliseconds(50) && passed < std::chrono::seconds(100);
  }

 private:
  Clock::time_point begin_ = Clock::now();
};

const std::string kLost = "the connection to the server '";
const std::string kNoAnswer = "' did not answer within 0.7 seconds";

class ConnectionTest : public ::testing::Test {
 protected:
  [[nodiscard]] static std::string User() { return "CN=Berta Önder,OU=Linden," + Base(); }
  [[nodiscard]] static std::string Unknown(const std::string& because) {
    return "-5 whether the change of '" + User() + "' was done is not known: " + because;
  }
  [[nodiscard]] std::string Stored(const std::string& attribute) {
    return administrator_.Stored(User())[attribute].empty()
               ? "none"
               : administrator_.Stored(User())[attribute].front();
  }

  LabAdministrator administrator_;
};

TEST_F(ConnectionTest, ALostConnectionIsOpenedAgainForAReading) {
  const RelayedSession relayed;
  EXPECT_EQ(ReadValue(relayed.store(), User(), "mail"), "berta@pelora.test");
  EXPECT_EQ(relayed.relay.connections(), 1);
  const_cast<TcpRelay&>(relayed.relay).Cut();
  EXPECT_EQ(ReadValue(relayed.store(), User(), "mail"), "berta@pelora.test");
  EXPECT_EQ(relayed.relay.connections(), 2);
}

TEST_F(ConnectionTest, AReadingThatIsCutOffIsDoneAnewOnce) {
  RelayedSession relayed;
  relayed.relay.CutAtNextRequest();
  EXPECT_EQ(ReadValue(relayed.store(), User(), "mail"), "berta@pelora.test");
  EXPECT_EQ(relayed.relay.connections(), 2);
  relayed.relay.CutAtNextAnswer();
  EXPECT_EQ(ReadValue(relayed.store(), User(), "mail"), "berta@pelora.test");
  EXPECT_EQ(relayed.relay.connections(), 3);
}

TEST_F(ConnectionTest, AReadingThatIsCutOffTwiceFails) {
  LdapStandIn server({}, [](const StandInRequest&) { return StandInAnswer{.hangs_up = true}; });
  const auto session = OpenSession({.server = server.Address()});
  server.Forget();
  EXPECT_EQ(ReadValue(session->store(), "CN=a,DC=x", "mail"),
            "-1 " + kLost + server.Address() + "' was lost");
  // Twice the entry itself, and once what a connection that is opened asks for.
  EXPECT_EQ(server.requests(), 4);
}

TEST_F(ConnectionTest, ManyReadingsGoOnWhereTheyWereCutOff) {
  RelayedSession relayed;
  std::vector<std::string> names;
  for (int number = 0; number < 600; ++number) {
    names.push_back("CN=Person " + std::to_string(number) + ",OU=Many," + Base());
  }
  std::size_t count = 0;
  const StoreStatus status =
      relayed.store().ReadMany(names, {}, [&](const StoreStatus& read, const Entry& entry) {
        EXPECT_TRUE(read.Ok()) << read.text;
        EXPECT_EQ(entry.dn, names[count]);
        if (++count == 100) relayed.relay.Cut();
        return true;
      });
  EXPECT_EQ(ToText(status), "0");
  EXPECT_EQ(count, names.size());
  EXPECT_EQ(relayed.relay.connections(), 2);
}

TEST_F(ConnectionTest, ASearchThatHasFoundSomethingIsNotBegunAgain) {
  RelayedSession relayed;
  // What is asked once is known then.
  EXPECT_NE(ReadValue(relayed.store(), User(), "cn"), "");
  // Of a megabyte that the server says at once; what is on its way would arrive after a cut, too.
  relayed.relay.HoldAnswersAfter(300'000);
  int count = 0;
  const auto take = [&](const Entry& /*entry*/) {
    if (++count != 10) return true;
    relayed.relay.Cut();
    // Whoever connects anew is let in.
    relayed.relay.HoldAnswersAfter(std::numeric_limits<std::size_t>::max());
    return true;
  };
  const StoreStatus status = relayed.store().Search(
      {.base = "OU=Many," + Base(), .scope = ldap::SearchScope::kOneLevel, .attributes = {}}, take);
  EXPECT_EQ(status.code, -1);
  EXPECT_NE(status.text.find("was lost during the search"), std::string::npos) << status.text;
  EXPECT_GE(count, 10);
  EXPECT_LT(count, 1100);
}

TEST_F(ConnectionTest, AWriteThatFindsItsConnectionLostIsSentOnAnother) {
  RelayedSession relayed;
  relayed.relay.Cut();
  EXPECT_EQ(ToText(Replace(relayed.store(), User(), "description", {"on another"})), "0");
  EXPECT_EQ(relayed.relay.connections(), 2);
  EXPECT_EQ(Stored("description"), "on another");
}

TEST_F(ConnectionTest, AWriteWithoutAnAnswerIsNeitherDoneNorRepeated) {
  RelayedSession relayed;
  const std::string lost = kLost + relayed.session->server() + "' was lost";
  // It has been done, and the answer was lost.
  relayed.relay.CutAtNextAnswer();
  EXPECT_EQ(ToText(Replace(relayed.store(), User(), "description", {"done"})), Unknown(lost));
  EXPECT_EQ(Stored("description"), "done");
  // It has not been done; from here that looks the same.
  administrator_.Set(User(), "description", {"as it was"});
  EXPECT_EQ(ReadValue(relayed.store(), User(), "description"), "as it was");
  relayed.relay.CutAtNextRequest();
  EXPECT_EQ(ToText(Replace(relayed.store(), User(), "description", {"not done"})), Unknown(lost));
  EXPECT_EQ(Stored("description"), "as it was");
  EXPECT_EQ(ReadValue(relayed.store(), User(), "description"), "as it was");
}

TEST_F(ConnectionTest, AWriteWithoutAnAnswerIsSentOnce) {
  LdapStandIn server({}, [](const StandInRequest&) { return StandInAnswer{.hangs_up = true}; });
  const auto session = OpenSession({.server = server.Address()});
  server.Forget();
  EXPECT_EQ(Replace(session->store(), "CN=a,DC=x", "mail", {"m"}).code, -5);
  EXPECT_EQ(server.requests(), 1);
  const StoreStatus added =
      session->store().Add({.dn = "CN=a,DC=x", .attributes = {{"mail", {"m"}}}});
  EXPECT_EQ(added.code, -5);
  EXPECT_TRUE(added.text.starts_with("whether the making of 'CN=a,DC=x' was done is not known: "))
      << added.text;
}

TEST_F(ConnectionTest, TheStatusOfAnUnknownOutcomeIsATimeoutAndItsTextIsKept) {
  RelayedSession relayed;
  Ref<IADs> user;
  ASSERT_EQ(relayed.session->service().ADsGetObject("LDAP://" + User(), IID_IADs, user), S_OK);
  ASSERT_EQ(user->Put("description", Variant::String("lost")), S_OK);
  relayed.relay.CutAtNextAnswer();
  EXPECT_EQ(user->SetInfo(), static_cast<HRESULT>(0x800705B4U));
  EXPECT_EQ(ToText(relayed.session->service().last_failure()),
            Unknown(kLost + relayed.session->server() + "' was lost"));
  // Everything is still staged; who sends it again knows what he does.
  EXPECT_EQ(user->SetInfo(), S_OK);
}

TEST_F(ConnectionTest, AServerThatHangsIsWaitedForSoLong) {
  const auto session = OpenImpatientSession(Server());
  RunningServer server;
  server.Pause();
  const std::string hangs = "the server 'dc1.pelora.test" + kNoAnswer;
  {
    const Stopwatch stopwatch;
    EXPECT_EQ(ReadValue(session->store(), User(), "mail"), "-5 " + hangs);
    EXPECT_TRUE(stopwatch.WaitedFor(kShortWait));
  }
  {
    // The connection that hung is given up; signing in on another hangs too.
    const Stopwatch stopwatch;
    const StoreStatus status = Replace(session->store(), User(), "description", {"not sent"});
    // Nothing was sent: there is no doubt about what became of it.
    EXPECT_EQ(status.code, -1);
    EXPECT_TRUE(status.text.starts_with("cannot sign in to 'dc1.pelora.test': ")) << status.text;
    EXPECT_TRUE(stopwatch.WaitedFor(kShortWait));
  }
  server.Resume();
  EXPECT_EQ(ReadValueAtLast(session->store(), User(), "mail"), "berta@pelora.test");
}

TEST_F(ConnectionTest, AWriteToAServerThatHangsIsNotKnownToBeDone) {
  const auto session = OpenImpatientSession(Server());
  RunningServer server;
  server.Pause();
  const Stopwatch stopwatch;
  EXPECT_EQ(ToText(Replace(session->store(), User(), "description", {"late"})),
            Unknown("the server 'dc1.pelora.test" + kNoAnswer));
  EXPECT_TRUE(stopwatch.WaitedFor(kShortWait));
  server.Resume();
  // This one does it as soon as it can.
  for (int tries = 0; tries < 100 && Stored("description") != "late"; ++tries) {
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
  EXPECT_EQ(Stored("description"), "late");
}

TEST_F(ConnectionTest, AnAnswerThatStopsInTheMiddleIsWaitedForNoLonger) {
  RelayedSession relayed(kShortWait);
  relayed.relay.HoldAnswersAfter(20);
  const Stopwatch stopwatch;
  EXPECT_EQ(ReadValue(relayed.store(), User(), "mail"),
            "-5 the server '" + relayed.session->server() + kNoAnswer);
  EXPECT_TRUE(stopwatch.WaitedFor(kShortWait));
}

TEST_F(ConnectionTest, AServerThatTakesNothingIsWaitedForNoLonger) {
  RelayedSession relayed(kShortWait);
  relayed.relay.HoldRequests();
  // More than what the machine keeps for a connection.
  std::vector<std::string> values;
  for (int number = 0; number < 50; ++number) {
    values.push_back(std::string(100'000, 'x') + std::to_string(number));
  }
  const Stopwatch stopwatch;
  EXPECT_EQ(ToText(Replace(relayed.store(), User(), "otherMailbox", values)),
            Unknown("the server '" + relayed.session->server() + kNoAnswer));
  EXPECT_TRUE(stopwatch.WaitedFor(kShortWait));
}

TEST_F(ConnectionTest, AMachineThatTakesNoConnectionIsWaitedForNoLonger) {
  const FullListener machine;
  std::unique_ptr<NetworkSession> session;
  const Stopwatch stopwatch;
  const StoreStatus status =
      NetworkSession::Open({.server = machine.Address(), .connect_timeout = kShortWait}, session);
  EXPECT_EQ(ToText(status), "-1 cannot reach the server '" + machine.Address() +
                                "': it took no connection within 0.7 seconds");
  EXPECT_TRUE(stopwatch.WaitedFor(kShortWait));
}

TEST_F(ConnectionTest, AServerThatIsDownIsReachedAgainWhenItIsBack) {
  const auto session = OpenSession();
  RunningServer server;
  server.Kill();
  const std::string down = "-1 cannot reach the server 'dc1.pelora.test': Connection refused";
  EXPECT_EQ(ReadValue(session->store(), User(), "mail"), down);
  EXPECT_EQ(ToText(Replace(session->store(), User(), "description", {"nobody took it"})), down);
  server.Start();
  EXPECT_EQ(ReadValue(session->store(), User(), "mail"), "berta@pelora.test");
  EXPECT_NE(ReadValue(session->store(), User(), "description"), "nobody took it");
}

TEST_F(ConnectionTest, AServerThatWasFoundAndIsDownIsNamedAndReachedAgain) {
  const auto session = OpenSession({});
  RunningServer server;
  // The name server is down with it, which is not what one wants to hear.
  server.Kill();
  EXPECT_EQ(ReadValue(session->store(), User(), "mail"),
            "-1 cannot reach the server 'dc1.pelora.test': Connection refused");
  server.Start();
  EXPECT_EQ(ReadValue(session->store(), User(), "mail"), "berta@pelora.test");
}

TEST_F(ConnectionTest, WhatIsNoMessageEndsTheConnection) {
  const LdapStandIn server(
      {}, [](const StandInRequest&) { return StandInAnswer{.sends_nonsense = true}; });
  const auto session = OpenSession({.server = server.Address()});
  const StoreStatus status = Replace(session->store(), "CN=a,DC=x", "mail", {"m"});
  EXPECT_EQ(status.code, -5);
  Entry entry;
  EXPECT_FALSE(session->store().Read("CN=a,DC=x", {}, entry).Ok());
  // It is still of use.
  EXPECT_EQ(ToText(session->store().ReadRoot(entry)), "0");
}

TEST_F(ConnectionTest, EachThreadHasAConnectionOfItsOwn) {
  const auto session = OpenSession();
  const ldap::StoreOpener open = session->open_another();
  std::vector<std::string> found(4);
  std::vector<std::thread> threads;
  for (std::string& names : found) {
    threads.emplace_back([&names, open] {
      std::unique_ptr<ldap::IDirectoryStore> store;
      const StoreStatus opened = open(store, {});
      names = ToText(opened);
      for (int round = 0; opened.Ok() && round < 20; ++round) {
        names = ReadValue(*store, "CN=Ada Brandt,OU=Linden," + Base(), "mail");
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(found, std::vector<std::string>(4, "ada@pelora.test"));
}

}  // namespace
}  // namespace pelora::lab
