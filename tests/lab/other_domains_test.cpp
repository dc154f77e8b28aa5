// SPDX-License-Identifier: Apache-2.0
// Domains around a directory's own: what lies there is asked of their controllers, and written
// there. The directory is a script's, and the lab's domain is one that it knows of.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <mutex>

#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/network/domain_controllers.h"
#include "hosts/ldap/network/domain_servers.h"
#include "hosts/ldap/network/domains_store.h"
#include "tests/lab/lab_test.h"
#include "tests/lab/ldap_stand_in.h"

namespace pelora::lab {
namespace {

using ldap::DomainControllers;
using ldap::KnownDomain;
using ldap::KnownDomains;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;
using Kind = StandInRequest::Kind;

const std::string kPartitions = "CN=Partitions,CN=Configuration,DC=x";
const std::string kSystem = "CN=System,DC=x";

StandInEntry Partition(const std::string& base, const std::string& name) {
  return {"CN=" + name + "," + kPartitions, {{"nCName", {base}}, {"dnsRoot", {name}}}};
}
StandInEntry Trust(const std::string& name) {
  return {"CN=" + name + "," + kSystem, {{"trustPartner", {name}}}};
}

/// A home server that knows of other domains.
class OtherDomains : public ::testing::Test {
 protected:
  [[nodiscard]] static std::string User() { return "CN=Berta Önder,OU=Linden," + Base(); }
  [[nodiscard]] static std::string Numbered(int number) {
    return "CN=Person " + std::to_string(number) + ",OU=Many," + Base();
  }

  StandInAnswer Answer(const StandInRequest& request) {
    const std::lock_guard lock(mutex_);
    const bool is_search = request.kind == Kind::kSearch;
    asked_.push_back((is_search ? "" : "change ") + request.dn);
    if (!is_search) return {};
    if (request.dn == kPartitions) return {.entries = partitions_, .code = code_};
    if (request.dn == kSystem) return {.entries = trusts_};
    return {.entries = {{request.dn, {{"mail", {"home"}}}}}};
  }
  /// What the home server was asked since the last time.
  [[nodiscard]] std::vector<std::string> TakeAsked() {
    const std::lock_guard lock(mutex_);
    return std::exchange(asked_, {});
  }
  [[nodiscard]] ldap::IDirectoryStore& store() { return session_->store(); }

  std::mutex mutex_;
  std::vector<std::string> asked_;
  std::vector<StandInEntry> partitions_ = {Partition("DC=x", "x"),
                                           Partition("DC=pelora,DC=test", "pelora.test")};
  std::vector<StandInEntry> trusts_;
  int code_ = 0;
  LdapStandIn home_{{}, [this](const auto& request) { return Answer(request); }};
  std::unique_ptr<NetworkSession> session_ = OpenSession({.server = home_.Address()});
};

TEST_F(OtherDomains, AreReadFromTheForestAndFromItsTrusts) {
  partitions_ = {Partition("DC=x", "x"), Partition("DC=north,DC=x", "north.x"),
                 Partition("", "no")};
  trusts_ = {Trust("partner.example"), Trust("")};
  KnownDomains domains;
  ASSERT_EQ(ToText(ldap::ReadKnownDomains(store(), domains)), "0");
  EXPECT_EQ(domains.own_name, "x");
  EXPECT_EQ(domains.own_base, "DC=x");
  EXPECT_EQ(domains.forest_name, "x");
  const KnownDomain north{.name = "north.x", .base = "DC=north,DC=x", .is_of_forest = true};
  const KnownDomain partner{.name = "partner.example", .base = "DC=partner,DC=example"};
  EXPECT_THAT(domains.others, ElementsAre(north, partner));

  EXPECT_EQ(domains.DomainOf("CN=a,DC=x"), nullptr);
  EXPECT_EQ(*domains.DomainOf("CN=a, dc=North, dc=X"), north);
  EXPECT_EQ(*domains.DomainOf("DC=partner,DC=example"), partner);
  EXPECT_EQ(domains.DomainOf("CN=a,DC=elsewhere"), nullptr);
  EXPECT_EQ(domains.DomainOf("CN=a,DC=otherpartner,DC=example"), nullptr);
}

TEST_F(OtherDomains, AreNotAskedForBeforeANameComesThatMayBeOneOfTheirs) {
  for (const char* const name : {"CN=a,DC=x", "DC=x", "CN=Configuration,DC=x", "<GUID=00>"}) {
    EXPECT_EQ(ReadValue(store(), name, "mail"), "home");
  }
  EXPECT_EQ(ToText(Replace(store(), "CN=a,DC=x", "mail", {"m"})), "0");
  EXPECT_THAT(TakeAsked(), ElementsAre("CN=a,DC=x", "DC=x", "CN=Configuration,DC=x", "<GUID=00>",
                                       "change CN=a,DC=x"));
  // One of them is known by its place alone; another one is nobody's.
  EXPECT_EQ(ReadValue(store(), "CN=a,DC=below,DC=x", "mail"), "home");
  EXPECT_EQ(ReadValue(store(), "CN=a,DC=elsewhere", "mail"), "home");
  EXPECT_THAT(TakeAsked(),
              ElementsAre(kPartitions, kSystem, "CN=a,DC=below,DC=x", "CN=a,DC=elsewhere"));
}

TEST_F(OtherDomains, WhatLiesThereIsReadAndWrittenThere) {
  LabAdministrator administrator;
  administrator.Set(User(), "description", {"before"});
  EXPECT_EQ(ReadValue(store(), User(), "description"), "before");
  EXPECT_EQ(ToText(Replace(store(), User(), "description", {"after"})), "0");
  EXPECT_THAT(administrator.Stored(User())["description"], ElementsAre("after"));
  int found = 0;
  EXPECT_EQ(ToText(store().Search({.base = "OU=Linden," + Base(),
                                   .scope = ldap::SearchScope::kSubtree,
                                   .filter = "(cn=Berta Önder)",
                                   .attributes = {"mail"}},
                                  [&](const Entry&) { return ++found > 0; })),
            "0");
  EXPECT_EQ(found, 1);
  const std::string made = "CN=made elsewhere,OU=Contract," + Base();
  EXPECT_EQ(ToText(store().Add({.dn = made, .attributes = {{"objectClass", {"contact"}}}})), "0");
  const Entry seen{.dn = made, .attributes = {}};
  EXPECT_EQ(ToText(store().Rename(seen, "CN=renamed elsewhere,OU=Contract," + Base())), "0");
  const Entry renamed{.dn = "CN=renamed elsewhere,OU=Contract," + Base(), .attributes = {}};
  EXPECT_EQ(ToText(store().Remove(renamed, ldap::IDirectoryStore::Extent::kAlone)), "0");
  EXPECT_EQ(ReadValue(store(), renamed.dn, "mail").substr(0, 2), "32");
  // The home server has been asked for the domains, and for nothing of these.
  EXPECT_THAT(TakeAsked(), ElementsAre(kPartitions, kSystem));
}

TEST_F(OtherDomains, APathWithoutAServerIsBoundThere) {
  Ref<IADs> object;
  ASSERT_EQ(session_->service().ADsGetObject("LDAP://" + User(), IID_IADs, object), S_OK);
  Variant mail;
  ASSERT_EQ(object->Get("mail", mail), S_OK);
  EXPECT_EQ(mail, Variant::String("berta@pelora.test"));
  EXPECT_THAT(TakeAsked(), ElementsAre(kPartitions, kSystem));
}

TEST_F(OtherDomains, ATrustedOneIsAskedInTheSameWay) {
  partitions_ = {Partition("DC=x", "x")};
  trusts_ = {Trust("pelora.test")};
  EXPECT_EQ(ReadValue(store(), User(), "mail"), "berta@pelora.test");
}

TEST_F(OtherDomains, ManyAreReadInTheirOrder) {
  std::vector<std::string> names;
  for (int number = 0; number < 30; ++number) {
    names.push_back(number % 7 < 4 ? Numbered(number) : "CN=" + std::to_string(number) + ",DC=x");
  }
  std::vector<std::string> read;
  EXPECT_EQ(ToText(store().ReadMany(names, std::vector<std::string>{"mail"},
                                    [&](const StoreStatus& status, const Entry& entry) {
                                      EXPECT_EQ(ToText(status), "0");
                                      read.push_back(entry.dn);
                                      return read.size() < 20;
                                    })),
            "0");
  names.resize(20);
  EXPECT_EQ(read, names);
}

TEST_F(OtherDomains, ManyAreWrittenInTheirOrder) {
  LabAdministrator administrator;
  std::vector<std::string> names;
  for (int number = 0; number < 40; ++number) {
    names.push_back(number % 10 < 6 ? Numbered(number) : "CN=" + std::to_string(number) + ",DC=x");
  }
  // Several times the same object: the last one counts, and none may overtake another.
  names.insert(names.end(), 5, Numbered(0));
  std::size_t next = 0;
  std::vector<std::string> results;
  store().ModifyManyStrictly(
      [&]() -> std::optional<ldap::ModifyRequest> {
        if (next == names.size()) return std::nullopt;
        const std::string value = "write " + std::to_string(next);
        return ldap::ModifyRequest{
            .dn = names[next++],
            .modifications = {{ldap::Modification::Operation::kReplace, "mail", {value}}}};
      },
      [&](const StoreStatus& status) { results.push_back(ToText(status)); });
  EXPECT_EQ(results, std::vector<std::string>(names.size(), "0"));
  EXPECT_THAT(administrator.Stored(Numbered(0))["mail"], ElementsAre("write 44"));
  EXPECT_THAT(administrator.Stored(Numbered(35))["mail"], ElementsAre("write 35"));
  std::vector<std::string> at_home = {kPartitions, kSystem};
  for (const std::string& name : names) {
    if (name.ends_with(",DC=x")) at_home.push_back("change " + name);
  }
  EXPECT_EQ(TakeAsked(), at_home);
}

TEST_F(OtherDomains, OneWhoseControllersCannotBeHadSaysSo) {
  partitions_.push_back(Partition("DC=gone,DC=example", "gone.example"));
  const std::string why =
      "-1 no controller of the domain 'gone.example': the name servers know no "
      "directory server of the domain 'gone.example' ";
  EXPECT_THAT(ReadValue(store(), "CN=a,DC=gone,DC=example", "mail"), StartsWith(why));
  EXPECT_THAT(ToText(Replace(store(), "CN=a,DC=gone,DC=example", "mail", {"m"})), StartsWith(why));
  // Objects of others are not held up by it.
  const std::vector<std::string> names = {"CN=a,DC=gone,DC=example", "CN=a,DC=x"};
  std::vector<int> codes;
  EXPECT_EQ(ToText(store().ReadMany(names, {},
                                    [&](const StoreStatus& status, const Entry&) {
                                      codes.push_back(status.code);
                                      return true;
                                    })),
            "0");
  EXPECT_THAT(codes, ElementsAre(-1, 0));
}

/// What finds one server, whatever is looked for.
ldap::RealmServerFinder Finds(const std::string& address) {
  return [address](const NetworkOptions&, const std::string&) {
    return [address](const std::stop_token&, ldap::DomainServers& found) {
      found.servers.push_back({.name = *ldap::ParseServerName(address)});
      return StoreStatus{};
    };
  };
}

TEST(OtherDomainsControllers, OneOfAnotherRealmGetsNothing) {
  const LdapStandIn server({}, [](const StandInRequest&) { return StandInAnswer{}; });
  DomainControllers controllers({}, std::make_shared<ldap::SchemaCache>(), Finds(server.Address()));
  std::unique_ptr<ldap::IDirectoryStore> opened;
  EXPECT_THAT(ToText(controllers.Open({.name = "other.example", .base = "DC=x"}, {}, opened)),
              StartsWith("-2 cannot sign in to '" + server.Address() +
                         "': nobody vouches for it in the realm 'OTHER.EXAMPLE': "));
  EXPECT_EQ(opened, nullptr);
  EXPECT_EQ(server.requests(), 0);
  EXPECT_EQ(ToText(controllers.Open({.name = "Pelora.test", .base = "DC=x"}, {}, opened)), "0");
  EXPECT_NE(opened, nullptr);
}

/// What a chooser finds of users in a store.
std::vector<std::string> FindMail(ldap::IDirectoryStore& store, const std::string& base) {
  std::vector<std::string> found;
  EXPECT_EQ(ToText(store.Search({.base = base,
                                 .scope = ldap::SearchScope::kSubtree,
                                 .filter = "(&(objectClass=user)(sAMAccountName=berta))",
                                 .attributes = {"mail", "description"}},
                                [&](const Entry& entry) {
                                  for (const auto& [name, values] : entry.attributes) {
                                    found.push_back(name + ": " + values.front());
                                  }
                                  return true;
                                })),
            "0");
  return found;
}

TEST(OtherDomainsControllers, TheGlobalCatalogIsSearchedSealed) {
  DomainControllers controllers({}, std::make_shared<ldap::SchemaCache>());
  KnownDomains domains;
  const auto session = OpenSession();
  ASSERT_EQ(ToText(ldap::ReadKnownDomains(session->store(), domains)), "0");
  EXPECT_EQ(domains.catalog_host, Server());
  EXPECT_EQ(domains.forest_name, "pelora.test");
  EXPECT_THAT(domains.others, IsEmpty());
  // With the server that is worked with, and with those that the name servers tell.
  for (const std::string& host : {Server(), std::string()}) {
    domains.catalog_host = host;
    std::unique_ptr<ldap::IDirectoryStore> catalog;
    ASSERT_EQ(ToText(controllers.OpenCatalog(domains, {}, catalog)), "0");
    EXPECT_TRUE(catalog->IsSealed());
    EXPECT_THAT(FindMail(*catalog, Base()), Contains("mail: berta@pelora.test"));
    EXPECT_THAT(FindMail(*catalog, ""), Contains("mail: berta@pelora.test"));
  }
  std::vector<ldap::ServerName> servers;
  EXPECT_EQ(ToText(ldap::FindCatalogServers("pelora.test", kShortWait, servers)), "0");
  ASSERT_EQ(servers.size(), 1U);
  EXPECT_EQ(servers.front().Text(), Server() + ":3268");
  const StoreStatus none = ldap::FindCatalogServers("gone.example", kShortWait, servers);
  EXPECT_THAT(ToText(none), StartsWith("-1 the name servers know no directory server of the global "
                                       "catalog of 'gone.example' "));
}

TEST(OtherDomainsControllers, TheGlobalCatalogTakesNoChanges) {
  const std::string user = "CN=Berta Önder,OU=Linden," + Base();
  LabAdministrator administrator;
  administrator.Set(user, "description", {"as it was"});
  DomainControllers controllers({}, std::make_shared<ldap::SchemaCache>());
  std::unique_ptr<ldap::IDirectoryStore> catalog;
  ASSERT_EQ(ToText(controllers.OpenCatalog({.catalog_host = Server()}, {}, catalog)), "0");
  const auto refused = [](const std::string& what) {
    return "53 the global catalog takes no changes: " + what + " is for a controller of its domain";
  };
  EXPECT_EQ(ToText(Replace(*catalog, user, "description", {"by the catalog"})),
            refused("the change of '" + user + "'"));
  std::vector<std::string> many;
  std::vector<ldap::ModifyRequest> waiting(
      3, {.dn = user,
          .modifications = {{ldap::Modification::Operation::kReplace, "description", {"many"}}}});
  catalog->ModifyManyStrictly(
      [&]() -> std::optional<ldap::ModifyRequest> {
        if (waiting.empty()) return std::nullopt;
        ldap::ModifyRequest next = std::move(waiting.back());
        waiting.pop_back();
        return next;
      },
      [&](const StoreStatus& status) { many.push_back(ToText(status)); });
  EXPECT_EQ(many, std::vector<std::string>(3, refused("the change of '" + user + "'")));
  const Entry seen{.dn = user, .attributes = {}};
  EXPECT_EQ(ToText(catalog->Add({.dn = user, .attributes = {{"objectClass", {"contact"}}}})),
            refused("the making of '" + user + "'"));
  EXPECT_EQ(ToText(catalog->Rename(seen, "CN=Other,OU=Linden," + Base())),
            refused("the new name of '" + user + "'"));
  EXPECT_EQ(ToText(catalog->Delete(seen)), refused("the deletion of '" + user + "'"));
  EXPECT_EQ(ToText(catalog->Remove(seen, ldap::IDirectoryStore::Extent::kAlone)),
            refused("the deletion of '" + user + "'"));
  EXPECT_THAT(administrator.Stored(user)["description"], ElementsAre("as it was"));
}

/// Domains and bases of places, as one line each.
std::vector<std::string> Lines(const std::vector<ldap::SearchPlace>& places) {
  std::vector<std::string> lines;
  for (const ldap::SearchPlace& place : places) {
    std::string line = place.domain + ":";
    for (const std::string& base : place.bases) line += " " + base;
    lines.push_back(line);
  }
  return lines;
}

TEST_F(OtherDomains, ArePlacesToLookIn) {
  std::vector<ldap::SearchPlace> places;
  partitions_ = {Partition("DC=x", "x")};
  ASSERT_EQ(ToText(session_->find_places()(store(), places)), "0");
  EXPECT_THAT(Lines(places), ElementsAre("x: DC=x"));

  partitions_ = {Partition("DC=x", "x"), Partition("DC=north,DC=x", "north.x"),
                 Partition("DC=y", "y")};
  trusts_ = {Trust("pelora.test")};
  // One that is new asks anew; the other one's connection is in its way as long as it is there.
  session_.reset();
  session_ = OpenSession({.server = home_.Address()});
  ASSERT_EQ(ToText(session_->find_places()(store(), places)), "0");
  EXPECT_THAT(Lines(places), ElementsAre("x: DC=x", ": DC=x DC=y", "north.x: DC=north,DC=x",
                                         "y: DC=y", "pelora.test: DC=pelora,DC=test"));
  std::unique_ptr<ldap::IDirectoryStore> trusted;
  ASSERT_EQ(ToText(places.back().open(trusted, {})), "0");
  EXPECT_THAT(FindMail(*trusted, Base()), Contains("mail: berta@pelora.test"));
}

TEST_F(OtherDomains, AreAskedForAgainWhereTheServerHadTooMuchToDoAndNotWhereItRefuses) {
  const ldap::PlaceFinder find_places = session_->find_places();
  std::vector<ldap::SearchPlace> places;
  for (const int code :
       {ldap::kLdapBusy, ldap::kLdapUnavailable, ldap::kLdapInsufficientAccessRights}) {
    code_ = code;
    EXPECT_EQ(find_places(store(), places).code, code);
    EXPECT_EQ(ReadValue(store(), "CN=a,DC=elsewhere", "mail"), "home");
  }
  static_cast<void>(TakeAsked());
  EXPECT_EQ(find_places(store(), places).code, code_);
  EXPECT_EQ(ReadValue(store(), "CN=a,DC=elsewhere", "mail"), "home");
  EXPECT_THAT(TakeAsked(), ElementsAre("CN=a,DC=elsewhere"));
}

TEST(OtherDomainsOfASession, AreReadOnce) {
  const RelayedSession relayed;
  const ldap::PlaceFinder find_places = relayed.session->find_places();
  std::size_t before = 0;
  const auto begin = [&] { before = relayed.relay.traffic().requests; };
  const auto requests = [&] { return relayed.relay.traffic().requests - before; };
  const auto find = [&](ldap::IDirectoryStore& store) {
    std::vector<ldap::SearchPlace> places;
    EXPECT_EQ(ToText(find_places(store, places)), "0");
    EXPECT_THAT(Lines(places), ElementsAre("pelora.test: DC=pelora,DC=test"));
  };
  begin();
  find(relayed.store());
  // The root, the forest's domains, and the trusts.
  EXPECT_EQ(requests(), 3U);
  std::unique_ptr<ldap::IDirectoryStore> another;
  ASSERT_EQ(ToText(relayed.session->open_another()(another, {})), "0");
  begin();
  find(relayed.store());
  find(*another);
  EXPECT_EQ(requests(), 0U);
  // A name that may be one of theirs.
  EXPECT_THAT(ReadValue(*another, "CN=a,DC=elsewhere", "mail"), StartsWith("32 "));
  EXPECT_EQ(requests(), 1U);
}

TEST(OtherDomainsOfASession, AreReadAnewOnceAConnectionWasLost) {
  RelayedSession relayed;
  const ldap::PlaceFinder find_places = relayed.session->find_places();
  std::vector<ldap::SearchPlace> places;
  ASSERT_EQ(ToText(find_places(relayed.store(), places)), "0");
  relayed.relay.Cut();
  EXPECT_EQ(ReadValue(relayed.store(), Base(), "objectClass"), "top");
  const std::size_t before = relayed.relay.traffic().requests;
  ASSERT_EQ(ToText(find_places(relayed.store(), places)), "0");
  EXPECT_EQ(relayed.relay.traffic().requests - before, 3U);
  ASSERT_EQ(ToText(find_places(relayed.store(), places)), "0");
  EXPECT_EQ(relayed.relay.traffic().requests - before, 3U);
}

}  // namespace
}  // namespace pelora::lab
