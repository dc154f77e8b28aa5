// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/connection_status.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>

#include "directory/ascii_case.h"
#include "hosts/ldap/entry_values.h"
#include "hosts/ldap/network/kerberos_ticket.h"
#include "hosts/ldap/object_name.h"
#include "hosts/session/directory_time.h"

namespace pelora::session {
namespace {

/// The class of a server's settings when it is a read-only one, and their category: Samba tells it
/// by that alone.
constexpr const char* kReadOnlySettings = "nTDSDSARO";
constexpr const char* kReadOnlyCategory = "CN=NTDS-DSA-RO";

bool IsReadOnly(const ldap::Entry& settings) {
  const bool has_class = std::ranges::any_of(
      ldap::ValuesOf(settings, "objectClass"),
      [](const std::string& name) { return EqualsWithoutCase(name, kReadOnlySettings); });
  const std::string category = ldap::FirstValue(settings, "objectCategory");
  return has_class || EqualsWithoutCase(ldap::FirstPart(category), kReadOnlyCategory);
}

std::time_t Now() { return std::time(nullptr); }

/// The site of a server object: `CN=DC1,CN=Servers,CN=Site,CN=Sites,...`.
std::string SiteOf(const std::string& server_dn) {
  const std::string_view site = ldap::FirstPart(ldap::ContainerOf(ldap::ContainerOf(server_dn)));
  const std::size_t sign = site.find('=');
  return sign == std::string_view::npos ? std::string() : std::string(site.substr(sign + 1));
}

/// "2 days 3 hours", "3 hours 5 minutes", "5 minutes", "40 seconds": the two greatest units.
std::string InWords(std::int64_t seconds) {
  struct Unit {
    std::int64_t seconds;
    const char* name;
  };
  constexpr std::array kUnits = {Unit{86'400, "day"}, Unit{3'600, "hour"}, Unit{60, "minute"},
                                 Unit{1, "second"}};
  std::string text;
  int count = 0;
  for (const Unit& unit : kUnits) {
    const std::int64_t amount = seconds / unit.seconds;
    seconds %= unit.seconds;
    // Seconds are of interest where there is nothing greater.
    const bool is_small = unit.seconds == 1 && count > 0;
    if (amount == 0 || is_small || count == 2) continue;
    if (count++ > 0) text += ' ';
    text += std::to_string(amount);
    text += ' ';
    text += unit.name;
    if (amount != 1) text += 's';
  }
  return text;
}

std::string TicketText(const ConnectionStatus& status, std::time_t now) {
  if (status.user.empty()) return status.ticket_trouble;
  if (!status.ticket_end) return "without an end";
  const std::int64_t left = *status.ticket_end - now;
  const std::string rest = left <= 0 ? "over" : InWords(left) + " left";
  return "until " + WallTimeText(*status.ticket_end) + " (" + rest + ")";
}

std::string ClockText(const ConnectionStatus& status) {
  if (!status.seconds_ahead) return "the server does not say";
  const std::int64_t ahead = *status.seconds_ahead;
  // One second is what rounding makes of nothing.
  if (std::abs(ahead) <= 1) return "as this machine's";
  return InWords(std::abs(ahead)) + (ahead > 0 ? " ahead of" : " behind") + " this machine's";
}

std::string WritingText(const ConnectionStatus& status) {
  if (status.server.writer) return "read-only: changes go to " + status.server.writer->Text();
  return status.is_read_only ? "read-only: it names another server for changes"
                             : "it takes changes";
}

template <class Value>
Json OrNull(const std::optional<Value>& value) {
  return value ? Json(*value) : Json(nullptr);
}

Json OrNull(const std::string& text) { return text.empty() ? Json(nullptr) : Json(text); }

}  // namespace

ldap::StoreStatus ReadServerStatus(ldap::IDirectoryStore& store, std::time_t (*now)(),
                                   ConnectionStatus& status) {
  ldap::Entry root;
  const std::time_t before = now();
  ldap::StoreStatus read = store.ReadRoot(root);
  const std::time_t after = now();
  if (!read.Ok()) return read;
  if (const auto theirs = ReadDirectoryTime(ldap::FirstValue(root, "currentTime"))) {
    // It said so somewhere between the two.
    status.seconds_ahead = *theirs - (before + (after - before) / 2);
  }
  status.site = SiteOf(ldap::FirstValue(root, "serverName"));
  const std::string settings_dn = ldap::FirstValue(root, "dsServiceName");
  if (settings_dn.empty()) return {};
  ldap::Entry settings;
  const std::array<std::string, 2> kinds = {"objectClass", "objectCategory"};
  read = store.Read(settings_dn, kinds, settings);
  if (read.Ok()) status.is_read_only = IsReadOnly(settings);
  return read;
}

ldap::StoreStatus ReadConnectionStatus(const DirectorySession& session,
                                       ldap::IDirectoryStore& store, ConnectionStatus& status) {
  status = {};
  if (session.is_file) {
    status.file = session.path;
    return {};
  }
  ldap::KerberosTicket ticket;
  const ldap::StoreStatus held = ldap::ReadKerberosTicket(ticket);
  status.user = ticket.principal;
  status.ticket_trouble = held.text;
  if (ticket.end) status.ticket_end = std::chrono::system_clock::to_time_t(*ticket.end);
  ldap::StoreStatus read = ReadServerStatus(store, &Now, status);
  // Only now: asking may have led to another server.
  status.server = session.Server();
  return read;
}

std::string WhyChosen(const ldap::ChosenServer& server) {
  if (server.is_named) return "it was named";
  if (!server.told) {
    if (server.is_near) return "of the site '" + server.wanted_site + "'";
    return "the first of the domain's servers that could be reached";
  }
  const std::string kind = server.told->is_writable ? "writable" : "read-only";
  if (server.wanted_site.empty()) return kind + ", and it knows no site of this machine's";
  if (server.is_near) return kind + ", of the site '" + server.wanted_site + "'";
  return kind + ", as no such server of the site '" + server.wanted_site + "' could be reached";
}

std::vector<ConnectionRow> ConnectionRows(const ConnectionStatus& status, std::time_t now) {
  if (!status.file.empty()) return {{"Directory file", status.file}};
  std::vector<ConnectionRow> rows = {{"Server", status.server.name.Text()},
                                     {"Chosen", WhyChosen(status.server)}};
  if (!status.site.empty()) rows.push_back({"Site", status.site});
  rows.push_back({"Writing", WritingText(status)});
  if (!status.user.empty()) rows.push_back({"Signed in as", status.user});
  rows.push_back({"Ticket", TicketText(status, now)});
  rows.push_back({"Sealing", "Kerberos, " + std::to_string(status.server.sealed_bits) + " bits"});
  rows.push_back({"Clock", ClockText(status)});
  return rows;
}

Json ConnectionJson(const ConnectionStatus& status) {
  Json json;
  json["directory"] = OrNull(status.file);
  const bool is_server = status.file.empty();
  json["server"] = is_server ? Json(status.server.name.Text()) : Json(nullptr);
  json["chosen"] = is_server ? Json(WhyChosen(status.server)) : Json(nullptr);
  json["site"] = OrNull(status.site);
  json["wantedSite"] = OrNull(status.server.wanted_site);
  json["readOnly"] = is_server ? Json(status.is_read_only) : Json(nullptr);
  json["writer"] = status.server.writer ? Json(status.server.writer->Text()) : Json(nullptr);
  json["user"] = OrNull(status.user);
  json["ticketEnd"] =
      status.ticket_end ? Json(UniversalTimeText(*status.ticket_end)) : Json(nullptr);
  json["sealedBits"] = is_server ? Json(status.server.sealed_bits) : Json(nullptr);
  json["clockDifference"] = OrNull(status.seconds_ahead);
  return json;
}

}  // namespace pelora::session
