// SPDX-License-Identifier: Apache-2.0
// Which of a domain's servers takes over when the one in use goes away.
#include "hosts/ldap/network/server_choice.h"

#include <gtest/gtest.h>

#include <optional>

#include "hosts/ldap/network/network_store.h"
#include "tests/lab/lab_test.h"
#include "tests/lab/ldap_stand_in.h"

namespace pelora::lab {
namespace {

using ldap::LdapConnection;
using ldap::ServerName;

/// The only one of the domain's.
constexpr const char* kSite = "Default-First-Site-Name";

StandInAnswer AnswerNothing(const StandInRequest& /*request*/) { return {}; }

ServerName NameOf(const std::string& address) { return *ldap::ParseServerName(address); }

ldap::ServerFinder Finds(const std::vector<ServerName>& names) {
  return [names](const std::stop_token& /*stop*/, ldap::DomainServers& found) {
    for (const ServerName& name : names) found.servers.push_back({.name = name});
    return StoreStatus{};
  };
}

TEST(ServerChoice, TwoRecordsOfOneServerThatGoesAwayAreNoOtherServer) {
  std::optional<LdapStandIn> server(std::in_place, LdapStandIn::Options{}, AnswerNothing);
  const ServerName name = NameOf(server->Address());
  ldap::ServerChoice choice({}, Finds({name, name}));
  std::shared_ptr<LdapConnection> connection;
  ASSERT_EQ(ToText(choice.Connect({}, connection)), "0");
  ASSERT_TRUE(connection);
  server.reset();
  EXPECT_EQ(ToText(choice.Connect({}, connection)),
            "-1 cannot reach the server '" + name.Text() + "': Connection refused");
  EXPECT_FALSE(connection);
}

TEST(ServerChoice, ADomainWithoutServersIsAFailure) {
  ldap::ServerChoice choice({}, Finds({}));
  std::shared_ptr<LdapConnection> connection;
  EXPECT_EQ(choice.Connect({}, connection).code, -1);
  EXPECT_FALSE(connection);
  EXPECT_FALSE(choice.current());
}

TEST(ServerChoice, TheDomainsServersSayWhatTheyAre) {
  // It waits as long as it has to, and no longer than for one good answer.
  const NetworkOptions options{.ping_timeout = std::chrono::minutes(5)};
  ldap::DomainServers found;
  ASSERT_EQ(ToText(ldap::FindServersOfTicket(options)({}, found)), "0");
  EXPECT_EQ(found.site, kSite);
  ASSERT_EQ(found.servers.size(), 1U);
  const ldap::DomainServer& server = found.servers.front();
  EXPECT_EQ(server.name.Text(), Server());
  EXPECT_TRUE(server.is_near);
  ASSERT_TRUE(server.told);
  EXPECT_EQ(*server.told, (ldap::NetlogonAnswer{.domain = "pelora.test",
                                                .host = Server(),
                                                .site = kSite,
                                                .client_site = kSite,
                                                .is_closest = true,
                                                .is_writable = true}));
}

TEST(ServerChoice, ASessionSaysHowItsServerWasChosen) {
  const auto session = OpenSession(NetworkOptions{.site = kSite});
  const ldap::ChosenServer chosen = session->chosen();
  EXPECT_EQ(chosen.name.Text(), Server());
  EXPECT_FALSE(chosen.is_named);
  EXPECT_TRUE(chosen.is_near);
  EXPECT_EQ(chosen.wanted_site, kSite);
  EXPECT_EQ(chosen.sealed_bits, 256U);
  EXPECT_TRUE(OpenSession()->chosen().is_named);
  EXPECT_EQ(OpenSession()->chosen().sealed_bits, 256U);
}

TEST(ServerChoice, ASiteThatIsNoneIsAFailure) {
  std::unique_ptr<NetworkSession> session;
  const StoreStatus unknown = NetworkSession::Open({.site = "Nowhere"}, session);
  EXPECT_EQ(unknown.code, -1);
  EXPECT_TRUE(unknown.text.starts_with(
      "the name servers know no directory server of the site 'Nowhere' of the domain "
      "'pelora.test' (_ldap._tcp.Nowhere._sites.dc._msdcs.pelora.test)"))
      << unknown.text;
  EXPECT_EQ(ToText(NetworkSession::Open({.site = "no.where"}, session)),
            "-9 'no.where' is no name of a site");
}

TEST(ServerChoice, AServerThatTakesNobodyIsPassedOver) {
  for (const int code : {7, 51, 52, 80}) {
    const LdapStandIn unwilling({.bind_code = code}, AnswerNothing);
    const LdapStandIn willing({}, AnswerNothing);
    const ServerName name = NameOf(unwilling.Address());
    ldap::ServerChoice choice({}, Finds({name, NameOf(willing.Address())}));
    std::shared_ptr<LdapConnection> connection;
    EXPECT_EQ(ToText(choice.Connect({}, connection)), "0");
    EXPECT_EQ(choice.current(), NameOf(willing.Address()));
    ldap::ServerChoice without({}, Finds({name, NameOf(Server() + ":2")}));
    EXPECT_EQ(ToText(without.Connect({}, connection)),
              std::to_string(code) + " cannot sign in to '" + name.Text() + "': not like this");
  }
}

TEST(ServerChoice, OneThatGoesAwayAtAnyStepOfOpeningIsReplaced) {
  // Three steps of signing in, and three readings.
  constexpr int kSteps = 6;
  for (int answers = 0; answers <= kSteps; ++answers) {
    SCOPED_TRACE(answers);
    const LdapStandIn first({.most_answers = answers}, AnswerNothing);
    const LdapStandIn second({}, AnswerNothing);
    const auto choice = std::make_shared<ldap::ServerChoice>(
        NetworkOptions{}, Finds({NameOf(first.Address()), NameOf(second.Address())}));
    ldap::NetworkStore store(choice, std::make_shared<ldap::SchemaCache>());
    EXPECT_EQ(ToText(store.Open()), "0");
    EXPECT_EQ(choice->current()->Text(), (answers == kSteps ? first : second).Address());
    // What is asked next is answered by the second in any case.
    Entry root;
    EXPECT_EQ(ToText(store.ReadRoot(root)), "0");
    EXPECT_EQ(choice->current()->Text(), second.Address());
  }
}

TEST(ServerChoice, OneThatGoesAwayAtAWriteLeavesItUnknownAndTheOtherGoesOn) {
  for (int answers = 6; answers <= 8; ++answers) {
    const LdapStandIn first({.most_answers = answers}, AnswerNothing);
    const LdapStandIn second({}, AnswerNothing);
    ldap::NetworkStore store(
        std::make_shared<ldap::ServerChoice>(
            NetworkOptions{}, Finds({NameOf(first.Address()), NameOf(second.Address())})),
        std::make_shared<ldap::SchemaCache>());
    ASSERT_EQ(ToText(store.Open()), "0");
    std::string codes;
    for (int write = 0; write < 5; ++write) {
      codes += std::to_string(Replace(store, "CN=a,DC=x", "mail", {"m"}).code) + " ";
    }
    std::string expected = "0 0 0 0 0 ";
    expected.replace(static_cast<std::size_t>(2 * (answers - 6)), 1, "-5");
    EXPECT_EQ(codes, expected);
  }
}

TEST(ServerChoice, AServerThatWasNamedHasNoOther) {
  const LdapStandIn server({.most_answers = 4}, AnswerNothing);
  std::unique_ptr<NetworkSession> session;
  EXPECT_EQ(ToText(NetworkSession::Open({.server = server.Address()}, session)),
            "-1 the connection to the server '" + server.Address() + "' was lost");
  EXPECT_EQ(server.connections(), 1);
}

TEST(ServerChoice, OneThatSaysNothingWhenOneSignsInIsPassedOverSoon) {
  constexpr std::chrono::seconds kLongWait{60};
  TcpRelay silent(ldap::kDirectoryPort);
  silent.HoldRequests();
  const TcpRelay other(ldap::kDirectoryPort);
  const auto through = [](const TcpRelay& relay) {
    return NameOf(Server() + ":" + std::to_string(relay.port()));
  };
  const auto choice = std::make_shared<ldap::ServerChoice>(
      NetworkOptions{.connect_timeout = kShortWait, .request_timeout = kLongWait},
      Finds({through(silent), through(other)}));
  ldap::NetworkStore store(choice, std::make_shared<ldap::SchemaCache>());
  const auto begin = std::chrono::steady_clock::now();
  StoreStatus status = store.Open();
  for (int tries = 1; tries < kTries && !status.Ok(); ++tries) status = store.Open();
  EXPECT_EQ(ToText(status), "0");
  EXPECT_EQ(choice->current(), through(other));
  EXPECT_GT(silent.connections(), 0);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, kLongWait);
}

TEST(ServerChoice, TheOnlyOneIsWaitedForAsForAnyAnswer) {
  constexpr std::chrono::milliseconds kSoon{300};
  TcpRelay slow(ldap::kDirectoryPort);
  slow.SetDelay(kSoon + kSoon / 3);
  const ServerName name = NameOf(Server() + ":" + std::to_string(slow.port()));
  // Several records may name it.
  const auto choice = std::make_shared<ldap::ServerChoice>(NetworkOptions{.connect_timeout = kSoon},
                                                           Finds({name, name}));
  ldap::NetworkStore store(choice, std::make_shared<ldap::SchemaCache>());
  EXPECT_EQ(ToText(store.Open()), "0");
  EXPECT_EQ(ToText(store.Open()), "0");
}

/// A store on a domain of two servers, which are two ways to the lab's domain controller.
class TakingOverTest : public ::testing::Test {
 protected:
  TakingOverTest() {
    const StoreStatus status = store_.Open();
    if (!status.Ok()) throw std::runtime_error(status.text);
  }

  [[nodiscard]] static ServerName Through(const TcpRelay& relay) {
    return NameOf(Server() + ":" + std::to_string(relay.port()));
  }
  [[nodiscard]] static std::string User() { return "CN=Berta Önder,OU=Linden," + Base(); }

  std::unique_ptr<TcpRelay> first_ = std::make_unique<TcpRelay>(ldap::kDirectoryPort);
  TcpRelay second_{ldap::kDirectoryPort};
  ldap::NetworkStore store_{std::make_shared<ldap::ServerChoice>(
                                NetworkOptions{}, Finds({Through(*first_), Through(second_)})),
                            std::make_shared<ldap::SchemaCache>()};
};

TEST_F(TakingOverTest, InTheMiddleOfAReadingTheOtherGoesOn) {
  std::vector<std::string> names;
  for (int number = 0; number < 600; ++number) {
    names.push_back("CN=Person " + std::to_string(number) + ",OU=Many," + Base());
  }
  std::size_t count = 0;
  const StoreStatus status =
      store_.ReadMany(names, {}, [&](const StoreStatus& read, const Entry& entry) {
        EXPECT_EQ(entry.dn, read.Ok() ? names[count] : "");
        if (++count == 100) first_.reset();
        return true;
      });
  EXPECT_EQ(ToText(status), "0");
  EXPECT_EQ(count, names.size());
  EXPECT_EQ(second_.connections(), 1);
}

TEST_F(TakingOverTest, InTheMiddleOfAWritingItIsToldAndNothingIsSentTwice) {
  LabAdministrator administrator;
  administrator.Set(User(), "description", {"before"});
  first_->CutAtNextAnswer();
  const StoreStatus status = Replace(store_, User(), "description", {"during"});
  EXPECT_EQ(status.code, -5);
  EXPECT_TRUE(
      status.text.starts_with("whether the change of '" + User() + "' was done is not known: "))
      << status.text;
  first_.reset();
  EXPECT_EQ(second_.connections(), 0);
  // Who looks sees what became of it, and goes on working.
  EXPECT_EQ(ReadValue(store_, User(), "description"), "during");
  EXPECT_EQ(ToText(Replace(store_, User(), "description", {"after"})), "0");
  EXPECT_EQ(second_.connections(), 1);
}

}  // namespace
}  // namespace pelora::lab
