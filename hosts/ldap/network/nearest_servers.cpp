// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/nearest_servers.h"

#include <algorithm>
#include <utility>

#include "directory/ascii_case.h"

namespace pelora::ldap {
namespace {

/// So many are asked at a time: more would not make it better, only louder.
constexpr std::size_t kMostAsked = 8;

DomainServer* Find(std::vector<DomainServer>& servers, const ServerName& name) {
  const auto found = std::ranges::find(servers, name, &DomainServer::name);
  return found == servers.end() ? nullptr : &*found;
}

/// Puts the servers of the site before the others, and in their own order.
void PutFirst(const std::vector<ServerName>& near, std::vector<DomainServer>& servers) {
  std::vector<DomainServer> ordered;
  for (const ServerName& name : near) {
    DomainServer* const known = Find(servers, name);
    ordered.push_back(known != nullptr ? *known : DomainServer{.name = name});
    ordered.back().is_near = true;
  }
  for (DomainServer& server : servers) {
    if (Find(ordered, server.name) == nullptr) ordered.push_back(std::move(server));
  }
  servers = std::move(ordered);
}

/// Asks the first of those that have not answered.
void Ask(const DomainQuestions& ask, const IsGoodAnswer& is_good,
         std::vector<DomainServer>& servers) {
  std::vector<ServerName> names;
  for (const DomainServer& server : servers) {
    if (!server.told && names.size() < kMostAsked) names.push_back(server.name);
  }
  if (names.empty()) return;
  ServerAnswers answers = ask.ping(names, is_good);
  for (std::size_t at = 0; at < names.size() && at < answers.size(); ++at) {
    Find(servers, names[at])->told = std::move(answers[at]);
  }
}

/// The site of the one who asks, as the first that knows it says.
std::string SiteTold(const std::vector<DomainServer>& servers) {
  for (const DomainServer& server : servers) {
    if (server.told && !server.told->client_site.empty()) return server.told->client_site;
  }
  return {};
}

/// Where a server stands in the order; the lowest is tried first.
int RankOf(const DomainServer& server) {
  constexpr int kSilent = 4;
  if (!server.told) return kSilent + (server.is_near ? 0 : 1);
  return (server.told->is_writable ? 0 : 2) + (server.is_near ? 0 : 1);
}

}  // namespace

StoreStatus FindNearestServers(const DomainQuestions& ask, const std::string& site,
                               DomainServers& found) {
  found = {.site = site};
  std::vector<ServerName> all;
  std::vector<ServerName> near;
  if (!site.empty()) {
    if (StoreStatus status = ask.look_up(site, near); !status.Ok()) return status;
  }
  // A site's servers alone are enough.
  StoreStatus status = ask.look_up({}, all);
  if (!status.Ok() && near.empty()) return status;
  for (const ServerName& name : all) found.servers.push_back({.name = name});

  if (site.empty()) {
    Ask(
        ask, [](const NetlogonAnswer& answer) { return !answer.client_site.empty(); },
        found.servers);
    found.site = SiteTold(found.servers);
    // A site that has no servers of its own has none in the domain name system either.
    if (!found.site.empty() && !ask.look_up(found.site, near).Ok()) near.clear();
  }
  const auto is_near = [&](const NetlogonAnswer& answer) {
    return EqualsWithoutCase(answer.site, found.site) || (site.empty() && answer.is_closest);
  };
  const auto is_best = [&](const NetlogonAnswer& answer) {
    return answer.is_writable && is_near(answer);
  };
  PutFirst(near, found.servers);
  const bool has_best = std::ranges::any_of(found.servers, [&](const DomainServer& server) {
    return server.told && is_best(*server.told);
  });
  // Nothing is to be learnt where nobody answers.
  const bool is_answered = !site.empty() || !found.site.empty();
  if (!has_best && is_answered) Ask(ask, is_best, found.servers);
  for (DomainServer& server : found.servers) {
    if (server.told && !found.site.empty() && is_near(*server.told)) server.is_near = true;
  }
  std::ranges::stable_sort(found.servers, {}, &RankOf);
  return {};
}

}  // namespace pelora::ldap
