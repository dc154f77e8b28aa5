// SPDX-License-Identifier: Apache-2.0
// Which of a domain's servers come first.
#include "hosts/ldap/network/nearest_servers.h"

#include <gtest/gtest.h>

#include <map>

#include "hosts/ldap/ldap_status.h"

namespace pelora::ldap {
namespace {

/// A domain as its name servers and its servers tell of it.
class Domain {
 public:
  /// By site; "" is the whole domain.
  std::map<std::string, std::vector<std::string>> records{};
  std::map<std::string, NetlogonAnswer> answers{};
  /// Who was asked, one line for each round.
  std::string asked{};

  /// The hosts in the order found, with the site before them; or why none is.
  std::string Find(const std::string& site = {}) {
    DomainServers found;
    const StoreStatus status = FindNearestServers(Questions(), site, found);
    if (!status.Ok()) return std::to_string(status.code) + " " + status.text;
    std::string text = found.site + ":";
    for (const DomainServer& server : found.servers) {
      text += " " + server.name.host;
      if (server.is_near) text += "!";
    }
    return text;
  }

 private:
  DomainQuestions Questions() {
    return {.look_up = [this](const std::string& site,
                              std::vector<ServerName>& servers) { return LookUp(site, servers); },
            .ping = [this](std::span<const ServerName> servers,
                           const IsGoodAnswer& is_good) { return Ping(servers, is_good); }};
  }

  StoreStatus LookUp(const std::string& site, std::vector<ServerName>& servers) {
    const auto found = records.find(site);
    if (found == records.end()) return {kLdapServerDown, "nothing of '" + site + "'"};
    for (const std::string& host : found->second) servers.push_back({.host = host});
    return {};
  }

  /// The servers answer in their order, until an answer is good.
  ServerAnswers Ping(std::span<const ServerName> servers, const IsGoodAnswer& is_good) {
    ServerAnswers told(servers.size());
    bool is_over = false;
    for (std::size_t at = 0; at < servers.size(); ++at) {
      asked += (at == 0 ? "" : " ") + servers[at].host;
      const auto found = answers.find(servers[at].host);
      if (is_over || found == answers.end()) continue;
      told[at] = found->second;
      is_over = is_good(found->second);
    }
    asked += "\n";
    return told;
  }
};

/// A server in `site` that is asked by a machine in "here".
NetlogonAnswer In(const std::string& site, bool is_writable = true) {
  return {.domain = "x.test",
          .site = site,
          .client_site = "here",
          .is_closest = site == "here",
          .is_writable = is_writable};
}

TEST(NearestServers, TheSitesOwnComeFirst) {
  Domain domain{.records = {{"", {"far1", "far2", "near"}}, {"here", {"near"}}},
                .answers = {{"far1", In("there")}, {"far2", In("there")}, {"near", In("here")}}};
  EXPECT_EQ(domain.Find(), "here: near! far1 far2");
  // One answer says which site it is; then the site's own are asked.
  EXPECT_EQ(domain.asked, "far1 far2 near\nnear far2\n");
}

TEST(NearestServers, WhereTheFirstToAnswerIsNearNobodyElseIsAsked) {
  Domain domain{.records = {{"", {"near", "far"}}, {"here", {"near"}}},
                .answers = {{"near", In("here")}, {"far", In("there")}}};
  EXPECT_EQ(domain.Find(), "here: near! far");
  EXPECT_EQ(domain.asked, "near far\n");
}

TEST(NearestServers, WritableOnesComeBeforeReadOnlyOnesHoweverNear) {
  Domain domain{
      .records = {{"", {"far-ro", "far", "near-ro", "near"}}, {"here", {"near-ro", "near"}}},
      .answers = {{"far-ro", In("there", false)},
                  {"far", In("there")},
                  {"near-ro", In("here", false)},
                  {"near", In("here")}}};
  EXPECT_EQ(domain.Find(), "here: near! near-ro! far-ro far");
  domain.answers.erase("near");
  EXPECT_EQ(domain.Find(), "here: far near-ro! far-ro near!");
}

TEST(NearestServers, AReadOnlyServerThatOnlyItsSiteKnowsIsFound) {
  Domain domain{.records = {{"", {"far"}}, {"here", {"near-ro"}}},
                .answers = {{"far", In("there")}, {"near-ro", In("here", false)}}};
  EXPECT_EQ(domain.Find(), "here: far near-ro!");
  domain.answers.erase("far");
  // Nobody says which site it is.
  EXPECT_EQ(domain.Find(), ": far");
  EXPECT_EQ(domain.Find("here"), "here: near-ro! far");
}

TEST(NearestServers, AServerThatServesTheSiteFromElsewhereIsNear) {
  NetlogonAnswer serving = In("there");
  serving.is_closest = true;
  Domain domain{.records = {{"", {"far", "serving"}}, {"here", {"serving"}}},
                .answers = {{"far", In("afar")}, {"serving", serving}}};
  EXPECT_EQ(domain.Find(), "here: serving! far");
}

TEST(NearestServers, ASiteThatIsNamedTakesThePlaceOfOnesOwn) {
  Domain domain{.records = {{"", {"near", "far"}}, {"here", {"near"}}, {"there", {"far"}}},
                .answers = {{"near", In("here")}, {"far", In("there")}}};
  EXPECT_EQ(domain.Find("there"), "there: far! near");
  EXPECT_EQ(domain.Find("There"), "-1 nothing of 'There'");
  domain.answers = {};
  EXPECT_EQ(domain.Find("there"), "there: far! near");
}

TEST(NearestServers, WhereNobodyAnswersTheyStayInTheirOrder) {
  Domain domain{.records = {{"", {"c", "a", "b"}}, {"here", {"b"}}}, .answers = {}};
  EXPECT_EQ(domain.Find(), ": c a b");
  EXPECT_EQ(domain.asked, "c a b\n");
}

TEST(NearestServers, OneThatDoesNotKnowTheSiteStillSaysThatItIsThere) {
  NetlogonAnswer lost = In("there");
  lost.client_site.clear();
  Domain domain{.records = {{"", {"silent", "lost"}}}, .answers = {{"lost", lost}}};
  EXPECT_EQ(domain.Find(), ": lost silent");
  EXPECT_EQ(domain.asked, "silent lost\n");
}

TEST(NearestServers, ASiteWithoutServersLeavesTheOthers) {
  Domain domain{.records = {{"", {"a", "b"}}}, .answers = {{"b", In("there")}}};
  EXPECT_EQ(domain.Find(), "here: b a");
}

TEST(NearestServers, ADomainThatNobodyKnowsIsAFailure) {
  Domain domain;
  EXPECT_EQ(domain.Find(), "-1 nothing of ''");
  domain.records = {{"there", {"far"}}};
  EXPECT_EQ(domain.Find("there"), "there: far!");
}

TEST(NearestServers, NoMoreThanSomeAreAskedAtATime) {
  Domain domain;
  for (int number = 0; number < 20; ++number) {
    const std::string host = "dc" + std::to_string(number);
    domain.records[""].push_back(host);
  }
  domain.records["here"] = {"dc15"};
  domain.answers = {{"dc2", In("there")}, {"dc15", In("here")}};
  EXPECT_TRUE(domain.Find().starts_with("here: dc15! dc2 dc0 dc1 dc3")) << domain.Find();
  EXPECT_TRUE(domain.asked.starts_with("dc0 dc1 dc2 dc3 dc4 dc5 dc6 dc7\ndc15 dc0 "))
      << domain.asked;
}

}  // namespace
}  // namespace pelora::ldap
