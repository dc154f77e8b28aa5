// SPDX-License-Identifier: Apache-2.0
// Searching and reading: parts of long attributes, many entries at once, and what the server
// has to say against it.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

#include "hosts/ldap/ldap_status.h"
#include "tests/lab/lab_test.h"
#include "tests/lab/ldap_stand_in.h"

namespace pelora::lab {
namespace {

constexpr std::size_t kPeople = 1100;
const std::string kUnreadable = "-4 the server sent something that cannot be read";

std::string Person(int number) {
  return "CN=Person " + std::to_string(number) + ",OU=Many," + Base();
}

/// What became of each of some names, one line each: the name that came back, or the code.
std::string ReadMany(ldap::IDirectoryStore& store, const std::vector<std::string>& names) {
  std::string lines;
  const StoreStatus status =
      store.ReadMany(names, {}, [&](const StoreStatus& read, const Entry& entry) {
        lines += (read.Ok() ? entry.dn : std::to_string(read.code)) + "\n";
        return true;
      });
  return lines + (status.Ok() ? "" : ToText(status));
}

std::string Lines(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  return text;
}

class ReadingTest : public ::testing::Test {
 protected:
  std::unique_ptr<NetworkSession> session_ = OpenSession();
  ldap::IDirectoryStore& store_ = session_->store();
};

TEST_F(ReadingTest, ASearchFindsMoreThanOnePageHolds) {
  std::set<std::string> names;
  const auto take = [&](const Entry& entry) {
    names.insert(entry.dn);
    return true;
  };
  EXPECT_EQ(ToText(store_.Search({.base = "OU=Many," + Base(),
                                  .scope = ldap::SearchScope::kOneLevel,
                                  .filter = "(objectClass=user)",
                                  .attributes = {"description"}},
                                 take)),
            "0");
  EXPECT_EQ(names.size(), kPeople);
}

TEST_F(ReadingTest, ASearchEndsWhenNoMoreIsWanted) {
  int count = 0;
  const auto take_three = [&](const Entry& /*entry*/) { return ++count < 3; };
  const ldap::SearchRequest everyone{.base = Base(), .scope = ldap::SearchScope::kSubtree};
  EXPECT_EQ(ToText(store_.Search(everyone, take_three)), "0");
  EXPECT_EQ(count, 3);
  // The connection is as good as before.
  EXPECT_EQ(ReadValue(store_, Person(7), "description"), "Number 7");
}

TEST_F(ReadingTest, WhileASearchIsUnderWayMoreCanBeAsked) {
  int count = 0;
  const auto take = [&](const Entry& entry) {
    EXPECT_EQ(ReadValue(store_, entry.dn, "mail"), entry.attributes.at("mail").front());
    return ++count < 20;
  };
  EXPECT_EQ(ToText(store_.Search({.base = "OU=Many," + Base(),
                                  .scope = ldap::SearchScope::kOneLevel,
                                  .attributes = {"mail"}},
                                 take)),
            "0");
  EXPECT_EQ(count, 20);
}

TEST_F(ReadingTest, ReferencesToOtherPartsArePassedOver) {
  std::vector<std::string> names;
  const auto take = [&](const Entry& entry) {
    names.push_back(entry.dn);
    return true;
  };
  EXPECT_EQ(ToText(store_.Search({.base = Base(),
                                  .scope = ldap::SearchScope::kSubtree,
                                  .filter = "(sAMAccountName=ada)",
                                  .attributes = {"mail"}},
                                 take)),
            "0");
  EXPECT_EQ(Lines(names), "CN=Ada Brandt,OU=Linden," + Base() + "\n");

  const LdapStandIn server({}, [](const StandInRequest& request) {
    return StandInAnswer{.entries = {{request.dn, {{"mail", {"m"}}}}},
                         .references = {"ldap://elsewhere.test/DC=y??sub"}};
  });
  const auto session = OpenSession({.server = server.Address()});
  EXPECT_EQ(ReadValue(session->store(), "CN=a,DC=x", "mail"), "m");
}

TEST_F(ReadingTest, ManyEntriesAreReadInTheOrderOfTheirNames) {
  std::vector<std::string> names;
  for (int number = 0; number < static_cast<int>(kPeople); ++number)
    names.push_back(Person(number));
  std::mt19937 generator(7);
  std::ranges::shuffle(names, generator);
  EXPECT_EQ(ReadMany(store_, names), Lines(names));
}

TEST_F(ReadingTest, AmongManyEachNameHasItsOwnOutcome) {
  const std::string linden = ",OU=Linden," + Base();
  const std::vector<std::string> names = {
      Person(1),
      "CN=Nobody,OU=Many," + Base(),
      Person(2),
      Person(2),
      "cn=PERSON 3,ou=many," + Base(),
      "CN=Carla Weiß\\, Dr." + linden,
      "CN=Carla Weiß\\2C Dr." + linden,
      "CN=CARLA WEIß\\, dr." + linden,
      "no name at all",
      "CN=Schema,CN=Configuration," + Base(),
      "CN=Elsewhere,DC=other,DC=test",
      "CN=Berta Önder" + linden,
      "CN=*" + linden,
      "CN=a)(cn=*" + linden,
      Person(4),
  };
  EXPECT_EQ(ReadMany(store_, names),
            Lines({Person(1), "32", Person(2), Person(2), Person(3), names[5], names[5], names[5],
                   "34", names[9], "32", names[11], "32", "34", Person(4)}));
}

TEST_F(ReadingTest, AmongSiblingsEachNameHasItsOwnOutcome) {
  const std::string many = ",OU=Many," + Base();
  const std::vector<std::string> names = {
      Person(1),     "CN=Nobody" + many,   Person(2),           Person(2), "cn=PERSON 3" + many,
      "CN=*" + many, "OU=Person 6" + many, "CN=a)(cn=*" + many, Person(4),
  };
  EXPECT_EQ(ReadMany(store_, names),
            Lines({Person(1), "32", Person(2), Person(2), Person(3), "32", "32", "34", Person(4)}));
  // Their container is not there, or is none.
  const std::string gone = ",OU=Gone," + Base();
  const std::string odd = ",OU=a=b," + Base();
  for (const auto& [container, code] : {std::pair(gone, "32"), std::pair(odd, "34")}) {
    const std::vector<std::string> lost = {"CN=a" + container, "CN=b" + container,
                                           "CN=c" + container, "CN=d" + container};
    EXPECT_EQ(ReadMany(store_, lost), Lines(std::vector<std::string>(4, code))) << container;
  }
}

TEST_F(ReadingTest, OfManyTheRestIsNotWantedAnyMore) {
  std::vector<std::string> names;
  for (int number = 0; number < 200; ++number) names.push_back(Person(number));
  int count = 0;
  EXPECT_EQ(ToText(store_.ReadMany(
                names, {},
                [&](const StoreStatus& /*read*/, const Entry& /*entry*/) { return ++count < 40; })),
            "0");
  EXPECT_EQ(count, 40);
  EXPECT_EQ(ReadMany(store_, {Person(5)}), Person(5) + "\n");
  EXPECT_EQ(ReadMany(store_, {}), "");
}

TEST_F(ReadingTest, AnEntryReadAmongManyIsTheWholeEntry) {
  Entry alone;
  ASSERT_TRUE(store_.Read(Person(8), {}, alone).Ok());
  ldap::AttributeMap together;
  const std::vector<std::string> names = {Person(7), Person(8)};
  ASSERT_TRUE(store_
                  .ReadMany(names, {},
                            [&](const StoreStatus& /*read*/, const Entry& entry) {
                              together = entry.attributes;
                              return true;
                            })
                  .Ok());
  EXPECT_EQ(together, alone.attributes);
  EXPECT_EQ(alone.attributes.at("description"), ldap::AttributeValues{"Number 8"});
}

/// A server that gives the values of `member` in parts of `part`, asked or not, as domain
/// controllers of Active Directory do; and all at once when that is 0, as Samba does.
StandInAnswer GiveInParts(const StandInRequest& request, std::size_t count, std::size_t part) {
  std::size_t first = 0;
  for (const std::string& attribute : request.attributes) {
    if (attribute.starts_with("member;range=")) first = std::stoul(attribute.substr(13));
  }
  const std::size_t end = part == 0 ? count : std::min(count, first + part);
  std::vector<std::string> values;
  for (std::size_t at = first; at < end; ++at) values.push_back("CN=" + std::to_string(at));
  std::string name = "member";
  if (part != 0 || first != 0) {
    name +=
        ";range=" + std::to_string(first) + "-" + (end == count ? "*" : std::to_string(end - 1));
  }
  return {.entries = {{request.names.empty() ? request.dn : request.names.front(),
                       {{"objectClass", {"top", "group"}}, {name, values}}}}};
}

/// How many values of `member` are read, and the first that is not where it should be.
std::string CountMembers(ldap::IDirectoryStore& store, bool among_many) {
  std::string text;
  const auto count = [&](const StoreStatus& status, const Entry& entry) {
    if (!status.Ok()) return !(text = ToText(status)).empty();
    const ldap::AttributeValues& values = entry.attributes.at("member");
    text = std::to_string(values.size());
    for (std::size_t at = 0; at < values.size(); ++at) {
      if (values[at] != "CN=" + std::to_string(at)) text += " but " + values[at];
    }
    text += entry.attributes.size() == 2 ? "" : " and more";
    return false;
  };
  if (among_many) {
    static_cast<void>(
        store.ReadMany(std::vector<std::string>{"CN=a,DC=x", "CN=b,DC=x"}, {}, count));
    return text;
  }
  Entry entry;
  const StoreStatus status = store.Read("CN=a,DC=x", {}, entry);
  count(status, entry);
  return text;
}

TEST(ReadingParts, AllValuesOfALongAttributeArePutTogether) {
  struct Row {
    std::size_t count;
    std::size_t part;
    /// To read it alone.
    int requests;
  };
  for (const Row& row :
       {Row{3, 0, 1}, Row{1500, 1500, 1}, Row{1501, 1500, 2}, Row{4501, 1500, 4}, Row{7, 1, 7}}) {
    LdapStandIn server({}, [&](const StandInRequest& request) {
      return GiveInParts(request, row.count, row.part);
    });
    const auto session = OpenSession({.server = server.Address()});
    server.Forget();
    EXPECT_EQ(CountMembers(session->store(), false), std::to_string(row.count));
    EXPECT_EQ(server.requests(), row.requests);
    EXPECT_EQ(CountMembers(session->store(), true), std::to_string(row.count));
  }
}

TEST(ReadingParts, ValuesThatGoAwayMeanwhileEndIt) {
  // Beyond the end Samba gives the attribute without values, and others nothing at all.
  for (const bool gives_name : {true, false}) {
    LdapStandIn server({}, [&](const StandInRequest& request) {
      StandInAnswer first = GiveInParts(request, 10, 5);
      const bool is_rest = !request.attributes.empty();
      if (is_rest && gives_name) first.entries = {{request.dn, {{"member;range=5-*", {}}}}};
      if (is_rest && !gives_name) first.entries = {{request.dn, {}}};
      return first;
    });
    const auto session = OpenSession({.server = server.Address()});
    EXPECT_EQ(CountMembers(session->store(), false), "5");
  }
}

TEST(ReadingParts, APartThatCannotBeReadIsAFailure) {
  LdapStandIn server({}, [&](const StandInRequest& request) {
    if (!request.attributes.empty()) return StandInAnswer{.code = 1, .text = "no such part"};
    return GiveInParts(request, 10, 5);
  });
  const auto session = OpenSession({.server = server.Address()});
  EXPECT_EQ(CountMembers(session->store(), false), "1 no such part");
}

TEST(ReadingParts, AServerThatGivesTheSamePartForeverIsNotAskedForever) {
  LdapStandIn server({}, [&](const StandInRequest& request) {
    return StandInAnswer{.entries = {{request.dn, {{"member;range=0-1", {"CN=0", "CN=1"}}}}}};
  });
  const auto session = OpenSession({.server = server.Address()});
  Entry entry;
  EXPECT_EQ(ToText(session->store().Read("CN=a,DC=x", {}, entry)), kUnreadable);
}

TEST(ReadingParts, SambaGivesAPartWhenItIsAskedFor) {
  LabAdministrator administrator;
  const std::string group = "CN=Long group,OU=Contract," + Base();
  std::vector<std::string> members;
  for (int number = 0; number < 30; ++number) members.push_back(Person(number));
  administrator.Add(group, {{"objectClass", {"group"}}, {"member", members}});
  const auto session = OpenSession();
  Entry entry;
  const std::vector<std::string> first = {"member;range=0-9"};
  ASSERT_TRUE(session->store().Read(group, first, entry).Ok());
  ldap::AttributeValues found = entry.attributes.at("member");
  std::ranges::sort(found);
  std::ranges::sort(members);
  EXPECT_EQ(found, members);
  EXPECT_EQ(entry.attributes.size(), 1U);
}

TEST(ServerSays, EveryCodeAndItsText) {
  int code = 0;
  const LdapStandIn server({}, [&](const StandInRequest& /*request*/) {
    return StandInAnswer{.code = code,
                         .text = "000020AB: the server's own words " + std::to_string(code)};
  });
  const auto session = OpenSession({.server = server.Address()});
  Ref<IADs> user;
  for (const ldap::LdapStatus& row : ldap::kLdapStatusTable) {
    const bool is_the_clients = row.code != row.libldap_code;
    // A bind in progress ends a request too, but with another code of the library's.
    if (row.code == 0 || is_the_clients) continue;
    code = row.code;
    EXPECT_EQ(session->service().ADsGetObject("LDAP://CN=a,DC=x", IID_IADs, user), row.status)
        << row.name;
    EXPECT_EQ(ToText(session->service().last_failure()),
              std::to_string(code) + " 000020AB: the server's own words " + std::to_string(code));
    EXPECT_EQ(Replace(session->store(), "CN=a,DC=x", "mail", {"m"}).code, code) << row.name;
    int count = 0;
    EXPECT_EQ(session->store()
                  .Search({.base = "DC=x"}, [&](const Entry& /*entry*/) { return ++count != 0; })
                  .code,
              code);
  }
}

TEST(ServerSays, WithoutWordsTheCodesOwnNameIsGiven) {
  const LdapStandIn server(
      {}, [](const StandInRequest& /*request*/) { return StandInAnswer{.code = 50}; });
  const auto session = OpenSession({.server = server.Address()});
  EXPECT_EQ(ReadValue(session->store(), "CN=a,DC=x", "mail"), "50 Insufficient access");
}

TEST(ServerSays, WhatWasFoundBeforeALimitIsGood) {
  const LdapStandIn server({}, [](const StandInRequest& request) {
    return StandInAnswer{
        .entries = {{"CN=found," + request.dn, {{"mail", {"m"}}}}}, .code = 4, .text = "enough"};
  });
  const auto session = OpenSession({.server = server.Address()});
  int count = 0;
  EXPECT_EQ(ToText(session->store().Search({.base = "DC=x"},
                                           [&](const Entry& /*entry*/) { return ++count != 0; })),
            "4 enough");
  EXPECT_EQ(count, 1);
}

TEST(ServerSays, AFilterThatIsNoneIsRefusedHere) {
  const auto session = OpenSession();
  const auto ignore = [](const Entry& /*entry*/) { return true; };
  EXPECT_EQ(ToText(session->store().Search({.base = Base(), .filter = "(mail="}, ignore)),
            "-7 not a search filter: (mail=");
}

class ValuesTest : public ReadingTest {};

TEST_F(ValuesTest, WhatDoesNotFitIsNotSent) {
  LdapStandIn server({}, [](const StandInRequest& /*request*/) { return StandInAnswer{}; });
  const auto session = OpenSession({.server = server.Address()});
  server.Forget();
  EXPECT_EQ(Replace(session->store(), "CN=a,DC=x", "peloraAccount", {"2147483648"}).code, 21);
  EXPECT_EQ(Replace(session->store(), "CN=a,DC=x", "peloraAccount", {"4294967301"}).code, 21);
  EXPECT_EQ(Replace(session->store(), "CN=a,DC=x", "mail", {""}).code, 21);
  EXPECT_EQ(Replace(session->store(), "CN=a,DC=x", "mail", {"A@x", "a@x"}).code, 20);
  EXPECT_EQ(Replace(session->store(), "CN=a,DC=x", "unknown", {"x"}).code, 16);
  EXPECT_EQ(ToText(session->store().Modify("CN=a,DC=x", {})), "0");
  EXPECT_EQ(server.requests(), 0);
  EXPECT_EQ(ToText(Replace(session->store(), "CN=a,DC=x", "peloraAccount", {"-2147483648"})), "0");
  EXPECT_EQ(server.requests(), 1);
}

TEST_F(ValuesTest, BoundsAreTheServersOwn) {
  const std::string user = "CN=Ada Brandt,OU=Linden," + Base();
  EXPECT_EQ(Replace(store_, user, "mail", {std::string(257, 'm')}).code, 19);
  EXPECT_EQ(Replace(store_, user, "displayName", {"one", "two"}).code, 19);
  EXPECT_EQ(store_.schema().Find("mail")->range_upper, 256);
}

TEST_F(ValuesTest, AnExtendedSchemaIsKnownToTheNextConnection) {
  const char* const name = "peloraTestNovelty";
  LabAdministrator administrator;
  EXPECT_FALSE(store_.schema().Find(name).has_value());
  administrator.Add("CN=Pelora-Test-Novelty,CN=Schema,CN=Configuration," + Base(),
                    {{"objectClass", {"attributeSchema"}},
                     {"lDAPDisplayName", {name}},
                     {"attributeID", {"1.2.840.113556.1.8000.2554.1.2.3"}},
                     {"attributeSyntax", {"2.5.5.9"}},
                     {"oMSyntax", {"2"}},
                     {"isSingleValued", {"TRUE"}}});
  administrator.Set("", "schemaUpdateNow", {"1"});
  std::unique_ptr<ldap::IDirectoryStore> another;
  ASSERT_TRUE(session_->open_another()(another, {}).Ok());
  ASSERT_TRUE(another->schema().Find(name).has_value());
  EXPECT_EQ(another->schema().Find(name)->syntax, ldap::Syntax::kInteger);
  // What is open keeps to the schema that it read.
  EXPECT_FALSE(store_.schema().Find(name).has_value());
}

}  // namespace
}  // namespace pelora::lab
