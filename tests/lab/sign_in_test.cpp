// SPDX-License-Identifier: Apache-2.0
// Which servers are reached, and how one signs in to them.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <map>

#include "hosts/ldap/network/domain_servers.h"
#include "tests/lab/lab_test.h"
#include "tests/lab/ldap_stand_in.h"

namespace pelora::lab {
namespace {

/// What opening a session says.
std::string Open(const NetworkOptions& options) {
  std::unique_ptr<NetworkSession> session;
  const StoreStatus status = NetworkSession::Open(options, session);
  EXPECT_EQ(session != nullptr, status.Ok());
  return status.Ok() ? "open on " + session->server() : ToText(status);
}

/// The same in a process that is started with some settings.
std::string OpenWith(const std::string& settings, const std::string& server) {
  std::string line = OutputOf(settings + " '" + std::getenv("PELORA_OPEN_SESSION") + "' " + server);
  line.pop_back();
  return line;
}

StandInAnswer AnswerNothing(const StandInRequest& /*request*/) { return {}; }

TEST(SignIn, ANamedServerIsUsed) {
  EXPECT_EQ(Open({.server = Server()}), "open on dc1.pelora.test");
  EXPECT_EQ(Open({.server = "DC1.pelora.test.:389"}), "open on dc1.pelora.test");
}

TEST(SignIn, WithoutANameTheDomainsNameServersTellOne) {
  EXPECT_EQ(Open({}), "open on dc1.pelora.test");
}

TEST(SignIn, ADomainWithoutServersSaysSo) {
  std::vector<ldap::ServerName> servers = {{}};
  const StoreStatus status = ldap::FindDomainServers("ELSEWHERE.TEST", {}, kShortWait, servers);
  EXPECT_EQ(status.code, -1);
  EXPECT_TRUE(status.text.starts_with(
      "the name servers know no directory server of the domain 'elsewhere.test' "
      "(_ldap._tcp.dc._msdcs.elsewhere.test): "))
      << status.text;
  EXPECT_TRUE(servers.empty());
}

TEST(SignIn, NameServersThatHangAreNotWaitedForAnyLonger) {
  RunningServer server;
  server.Pause();
  std::vector<ldap::ServerName> servers;
  const auto begin = std::chrono::steady_clock::now();
  const StoreStatus status = ldap::FindDomainServers("PELORA.TEST", {}, kShortWait, servers);
  EXPECT_EQ(status.code, -1) << status.text;
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(6));
}

TEST(SignIn, AServerThatIsNotThereIsNamed) {
  EXPECT_EQ(Open({.server = "nowhere.pelora.test"}),
            "-1 cannot reach the server 'nowhere.pelora.test': Name or service not known");
  EXPECT_EQ(Open({.server = Server() + ":2"}),
            "-1 cannot reach the server 'dc1.pelora.test:2': Connection refused");
  EXPECT_EQ(Open({.server = "no server"}), "-9 'no server' is no name of a server");
}

TEST(SignIn, PortsThatWouldNotDoAreRefused) {
  const std::string of_no_use = "53 the server 'dc1.pelora.test:";
  const std::string catalog = "' is of no use: the global catalog holds a part of each object only";
  EXPECT_EQ(Open({.server = Server() + ":3268"}), of_no_use + "3268" + catalog);
  EXPECT_EQ(Open({.server = Server() + ":3269"}), of_no_use + "3269" + catalog);
  EXPECT_EQ(
      Open({.server = Server() + ":636"}),
      of_no_use + "636' is of no use: what is sealed by Kerberos goes to port 389, without TLS");
}

TEST(SignIn, WithoutATicketItSaysHowToGetOne) {
  const EnvironmentVariable tickets("KRB5CCNAME", "FILE:/nonexistent/tickets");
  const std::string why =
      "no Kerberos ticket: get one with \"kinit\", or \"kinit name@REALM\" "
      "(No Kerberos credentials available (default cache: FILE:/nonexistent/tickets))";
  EXPECT_EQ(Open({.server = Server()}), "49 cannot sign in to 'dc1.pelora.test': " + why);
  EXPECT_EQ(Open({}), "49 " + why);
}

TEST(SignIn, AnExpiredTicketIsToldFromNone) {
  const std::string cache = "FILE:" + Home() + "/expired";
  static_cast<void>(OutputOf("echo Lab-Passw0rd | kinit -l 1s -c " + cache + " helper"));
  static_cast<void>(OutputOf("while klist -s -c " + cache + "; do sleep 0.1; done"));
  const EnvironmentVariable tickets("KRB5CCNAME", cache);
  EXPECT_EQ(
      Open({.server = Server()}),
      "49 cannot sign in to 'dc1.pelora.test': the Kerberos ticket has expired: get a new one "
      "with \"kinit\"");
}

TEST(SignIn, OneThatIsAboutToEndIsToldToo) {
  const std::string cache = "FILE:" + Home() + "/ending";
  static_cast<void>(OutputOf("echo Lab-Passw0rd | kinit -l 100s -c " + cache + " helper"));
  const EnvironmentVariable tickets("KRB5CCNAME", cache);
  EXPECT_EQ(
      Open({.server = Server()}),
      "-2 cannot sign in to 'dc1.pelora.test': the Kerberos ticket ends within two minutes, or "
      "has ended: get a new one with \"kinit\" (Ticket expired)");
}

/// A copy of the administrator's tickets, with the note of the Kerberos library's that this
/// machine's clock is so many seconds behind the one that is used.
std::string TicketsOfAClockAhead(std::int32_t seconds) {
  const std::string from = TicketsOf(kAdministrator).substr(std::string("FILE:").size());
  std::ifstream file(from, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(file), {}};
  const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(bytes.at(at)); };
  if (byte(0) != 5 || byte(1) != 4) throw std::runtime_error("another kind of ticket cache");
  const std::size_t notes = static_cast<std::size_t>(byte(2)) << 8U | byte(3);
  // One note of eight bytes: whole seconds and their millionths.
  std::string offset("\0\x0c\0\x01\0\x08", 6);
  for (const unsigned shift : {24U, 16U, 8U, 0U}) {
    offset += static_cast<char>(static_cast<std::uint32_t>(seconds) >> shift & 0xFFU);
  }
  offset.append(4, '\0');
  const std::string to = Home() + "/tickets_ahead";
  std::ofstream(to, std::ios::binary) << bytes.substr(0, 2) << offset << bytes.substr(4 + notes);
  return "FILE:" + to;
}

TEST(SignIn, AClockThatIsTooFarOffIsToldAsSuch) {
  // One that is behind finds that the ticket does not hold yet.
  for (const auto& [seconds, words] : std::map<std::int32_t, std::string>{
           {600, "Clock skew too great"}, {-600, "Ticket not yet valid"}}) {
    const EnvironmentVariable tickets("KRB5CCNAME", TicketsOfAClockAhead(seconds));
    EXPECT_EQ(
        Open({.server = Server()}),
        "-2 cannot sign in to 'dc1.pelora.test': the clocks of this machine and of the domain "
        "differ by more than Kerberos takes, mostly five minutes: set this machine's clock (" +
            words + ")");
  }
  const EnvironmentVariable tickets("KRB5CCNAME", TicketsOfAClockAhead(60));
  EXPECT_EQ(Open({.server = Server()}), "open on dc1.pelora.test");
}

TEST(SignIn, NoModuleOfAnotherLibraryIsNeeded) {
  EXPECT_EQ(OpenWith("SASL_PATH=/nonexistent", Server()), "open on dc1.pelora.test");
}

TEST(SignIn, ANameServerThatCallsTheAddressAnotherNameIsNotAsked) {
  // The name servers say that the server's address is the impostor's, who holds the key of another
  // service; the machine's settings for Kerberos are those that it comes with.
  const EnvironmentVariable keys("KRB5_KTNAME", "FILE:" + Home() + "/impostor.keytab");
  LdapStandIn impostor({.name = "impostor.pelora.test"}, AnswerNothing);
  const std::string names = Home() + "/forged_hosts";
  std::ofstream(names) << "127.0.0.1 impostor.pelora.test\n127.0.0.1 dc1.pelora.test\n";
  const auto open = [&](const std::string& server) {
    std::string line =
        OutputOf("\"$PELORA_LAB_NAMES\" " + names + " \"$PELORA_OPEN_SESSION\" " + server);
    line.pop_back();
    return line;
  };
  EXPECT_EQ(open(impostor.Address()),
            "49 cannot sign in to '" + impostor.Address() + "': Invalid credentials");
  EXPECT_EQ(impostor.connections(), 1);
  // The server itself is reached as ever.
  EXPECT_EQ(open(Server()), "open on dc1.pelora.test");
}

TEST(SignIn, SettingsOfTheMachineCannotWeakenIt) {
  EXPECT_EQ(OpenWith("LDAPSASL_SECPROPS=maxssf=0 LDAPSASL_MECH=PLAIN LDAPSASL_NOCANON=off "
                     "LDAPREFERRALS=on LDAPDEREF=always LDAPSIZELIMIT=1 LDAPTIMELIMIT=1",
                     Server()),
            "open on dc1.pelora.test");
}

TEST(SignIn, AServerThatOffersLessThanSealingIsRefused) {
  for (const unsigned strength : {0U, 1U}) {
    const LdapStandIn weak({.most_strength = strength}, AnswerNothing);
    EXPECT_EQ(Open({.server = weak.Address()}),
              "13 cannot sign in to '" + weak.Address() +
                  "': it does not offer signing and sealing, and nothing less is accepted");
  }
  const LdapStandIn strong({.most_strength = 256}, AnswerNothing);
  EXPECT_EQ(Open({.server = strong.Address()}), "open on " + strong.Address());
}

TEST(SignIn, WhatTheServerSaysAgainstItIsPassedOn) {
  const LdapStandIn server({.bind_code = 7}, AnswerNothing);
  EXPECT_EQ(Open({.server = server.Address()}),
            "7 cannot sign in to '" + server.Address() + "': not like this");
}

TEST(SignIn, ATicketForAnotherNameIsNotHad) {
  const std::string why = Open({.server = "127.0.0.1"});
  EXPECT_TRUE(
      why.starts_with("-2 cannot sign in to '127.0.0.1': name it by its full DNS name, as the "
                      "domain does (Server "))
      << why;
  EXPECT_NE(why.find("not found in Kerberos database"), std::string::npos) << why;
}

}  // namespace
}  // namespace pelora::lab
