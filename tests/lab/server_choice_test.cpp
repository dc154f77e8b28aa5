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

StandInAnswer AnswerNothing(const StandInRequest& /*request*/) { return {}; }

ServerName NameOf(const std::string& address) { return *ldap::ParseServerName(address); }

ldap::ServerFinder Finds(const std::vector<ServerName>& found) {
  return [found](std::vector<ServerName>& servers) {
    servers = found;
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
