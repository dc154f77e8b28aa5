// SPDX-License-Identifier: Apache-2.0
// What is told of a connection.
#include "hosts/session/connection_status.h"

#include <gtest/gtest.h>

#include "hosts/ldap/ldap_status.h"
#include "hosts/session/directory_time.h"
#include "tests/unit/store_scripted.h"

namespace pelora::session {
namespace {

/// 2026-11-22, 10:00:00 in Greenwich.
constexpr std::time_t kNow = 1'795'341'600;
std::time_t FixedNow() { return kNow; }

const std::string kSettings = "CN=NTDS Settings,CN=DC1,CN=Servers,CN=Here,CN=Sites,DC=x";

/// A server in the site "Here" whose clock is as this machine's.
ldap::ScriptedStore Server() {
  ldap::ScriptedStore store;
  store.root.attributes["currentTime"] = {"20261122100000.0Z"};
  store.root.attributes["serverName"] = {"CN=DC1,CN=Servers,CN=Here,CN=Sites,DC=x"};
  store.root.attributes["dsServiceName"] = {kSettings};
  store.entry = {.dn = kSettings, .attributes = {{"objectClass", {"top", "nTDSDSA"}}}};
  return store;
}

std::string RowText(const ConnectionStatus& status, const std::string& label) {
  for (const ConnectionRow& row : ConnectionRows(status, kNow)) {
    if (row.label == label) return row.text;
  }
  return "none";
}

std::string ClockAt(const std::string& time) {
  ldap::ScriptedStore store = Server();
  store.root.attributes["currentTime"] = {time};
  ConnectionStatus status;
  EXPECT_TRUE(ReadServerStatus(store, &FixedNow, status).Ok());
  return RowText(status, "Clock");
}

TEST(ConnectionStatus, ANamedWritableServer) {
  ldap::ScriptedStore store = Server();
  ConnectionStatus status{
      .server = {.name = {.host = "dc1.x.test"}, .is_named = true, .sealed_bits = 256},
      .user = "ada@X.TEST",
      .ticket_end = kNow + 9 * 3600 + 5 * 60 + 7};
  ASSERT_TRUE(ReadServerStatus(store, &FixedNow, status).Ok());
  std::string text;
  for (const ConnectionRow& row : ConnectionRows(status, kNow)) {
    text += row.label + ": " + row.text + "\n";
  }
  EXPECT_EQ(text,
            "Server: dc1.x.test\nChosen: it was named\nSite: Here\nWriting: it takes changes\n"
            "Signed in as: ada@X.TEST\nTicket: until " +
                WallTimeText(*status.ticket_end) +
                " (9 hours 5 minutes left)\nSealing: Kerberos, 256 bits\n"
                "Clock: as this machine's\n");
  EXPECT_EQ(JsonLine(ConnectionJson(status)),
            R"({"directory":null,"server":"dc1.x.test","chosen":"it was named","site":"Here",)"
            R"("wantedSite":null,"readOnly":false,"writer":null,"user":"ada@X.TEST",)"
            R"("ticketEnd":"2026-11-22T19:05:07Z","sealedBits":256,"clockDifference":0})");
}

TEST(ConnectionStatus, AReadOnlyServerSaysSo) {
  ldap::ScriptedStore store = Server();
  store.entry.attributes["objectClass"] = {"top", "nTDSDSA", "nTDSDSARO"};
  ConnectionStatus status;
  ASSERT_TRUE(ReadServerStatus(store, &FixedNow, status).Ok());
  EXPECT_EQ(RowText(status, "Writing"), "read-only: it names another server for changes");
  status.server.writer = {.host = "dc1.x.test"};
  EXPECT_EQ(RowText(status, "Writing"), "read-only: changes go to dc1.x.test");
  EXPECT_EQ(JsonLine(ConnectionJson(status)["writer"]), R"("dc1.x.test")");
}

TEST(ConnectionStatus, AReadOnlyServerOfSambasIsToldByItsCategory) {
  ldap::ScriptedStore store = Server();
  store.entry.attributes["objectClass"] = {"top", "nTDSDSA"};
  store.entry.attributes["objectCategory"] = {"CN=NTDS-DSA,CN=Schema,CN=Configuration,DC=x"};
  ConnectionStatus status;
  ASSERT_TRUE(ReadServerStatus(store, &FixedNow, status).Ok());
  EXPECT_FALSE(status.is_read_only);
  store.entry.attributes["objectCategory"] = {"CN=NTDS-DSA-RO,CN=Schema,CN=Configuration,DC=x"};
  ASSERT_TRUE(ReadServerStatus(store, &FixedNow, status).Ok());
  EXPECT_TRUE(status.is_read_only);
}

TEST(ConnectionStatus, AClockThatIsOffIsToldInWords) {
  EXPECT_EQ(ClockAt("20261122100001.0Z"), "as this machine's");
  EXPECT_EQ(ClockAt("20261122095959.0Z"), "as this machine's");
  EXPECT_EQ(ClockAt("20261122100002.0Z"), "2 seconds ahead of this machine's");
  EXPECT_EQ(ClockAt("20261122101000.0Z"), "10 minutes ahead of this machine's");
  EXPECT_EQ(ClockAt("20261122085830.0Z"), "1 hour 1 minute behind this machine's");
  EXPECT_EQ(ClockAt("20261124110000.0Z"), "2 days 1 hour ahead of this machine's");
  EXPECT_EQ(ClockAt("yesterday"), "the server does not say");
  // No server's clock shows it, and nothing comes of it.
  EXPECT_NE(ClockAt("99991231235959.0Z"), "the server does not say");
}

TEST(ConnectionStatus, ATicketThatIsOverOrGoneIsTold) {
  ConnectionStatus status{.user = "ada@X.TEST", .ticket_end = kNow};
  EXPECT_TRUE(RowText(status, "Ticket").ends_with(" (over)")) << RowText(status, "Ticket");
  status.ticket_end.reset();
  EXPECT_EQ(RowText(status, "Ticket"), "without an end");
  status = {.ticket_trouble = "the Kerberos ticket has expired"};
  EXPECT_EQ(RowText(status, "Ticket"), "the Kerberos ticket has expired");
  EXPECT_EQ(RowText(status, "Signed in as"), "none");
}

TEST(ConnectionStatus, AServerThatSaysNothingIsKnownByItsNameAlone) {
  ldap::ScriptedStore store;
  ConnectionStatus status{.server = {.name = {.host = "dc1.x.test"}}};
  ASSERT_TRUE(ReadServerStatus(store, &FixedNow, status).Ok());
  EXPECT_EQ(RowText(status, "Site"), "none");
  EXPECT_EQ(JsonLine(ConnectionJson(status)["clockDifference"]), "null");
  store.failure = {ldap::kLdapServerDown, "gone"};
  EXPECT_EQ(ReadServerStatus(store, &FixedNow, status).text, "gone");
}

TEST(ConnectionStatus, AFileIsNamed) {
  const ConnectionStatus status{.file = "/srv/company.ldb"};
  const std::vector<ConnectionRow> rows = ConnectionRows(status, kNow);
  ASSERT_EQ(rows.size(), 1U);
  EXPECT_EQ(rows[0].label + ": " + rows[0].text, "Directory file: /srv/company.ldb");
  EXPECT_EQ(
      JsonLine(ConnectionJson(status)),
      R"({"directory":"/srv/company.ldb","server":null,"chosen":null,"site":null,)"
      R"("wantedSite":null,"readOnly":null,"writer":null,"user":null,"ticketEnd":null,"sealedBits":null,)"
      R"("clockDifference":null})");
}

TEST(ConnectionStatus, WhyAServerWasChosen) {
  ldap::ChosenServer server{.name = {.host = "dc1"}};
  EXPECT_EQ(WhyChosen(server), "the first of the domain's servers that could be reached");
  server.wanted_site = "Here";
  server.is_near = true;
  EXPECT_EQ(WhyChosen(server), "of the site 'Here'");
  server.told = ldap::NetlogonAnswer{.site = "Here", .is_writable = true};
  EXPECT_EQ(WhyChosen(server), "writable, of the site 'Here'");
  server.is_near = false;
  EXPECT_EQ(WhyChosen(server), "writable, as no such server of the site 'Here' could be reached");
  server.told->is_writable = false;
  EXPECT_EQ(WhyChosen(server), "read-only, as no such server of the site 'Here' could be reached");
  server.wanted_site.clear();
  EXPECT_EQ(WhyChosen(server), "read-only, and it knows no site of this machine's");
}

}  // namespace
}  // namespace pelora::session
