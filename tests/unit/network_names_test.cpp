// SPDX-License-Identifier: Apache-2.0
// Names as a directory on the network has them: of servers, of its parts, of objects in a filter,
// of attributes that come in parts.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "hosts/ldap/network/deleted_names.h"
#include "hosts/ldap/network/name_filter.h"
#include "hosts/ldap/network/naming_contexts.h"
#include "hosts/ldap/network/referral.h"
#include "hosts/ldap/network/server_name.h"
#include "hosts/ldap/network/value_ranges.h"

namespace pelora::ldap {
namespace {

std::string Read(const char* text) {
  const auto server = ParseServerName(text);
  return server ? server->Text() + " " + server->Uri() : "none";
}

TEST(ServerName, IsTheSameHoweverItIsSpelled) {
  EXPECT_EQ(Read("dc1.example.test"), "dc1.example.test ldap://dc1.example.test:389");
  EXPECT_EQ(Read("DC1.Example.TEST."), Read("dc1.example.test"));
  EXPECT_EQ(Read("dc1.example.test:389"), Read("dc1.example.test"));
  EXPECT_EQ(Read("dc1:3268"), "dc1:3268 ldap://dc1:3268");
  EXPECT_EQ(Read("192.0.2.7"), "192.0.2.7 ldap://192.0.2.7:389");
  EXPECT_EQ(Read("[2001:DB8::7]"), "[2001:db8::7] ldap://[2001:db8::7]:389");
  EXPECT_EQ(Read("[::1]:3890"), "[::1]:3890 ldap://[::1]:3890");
}

TEST(ServerName, OtherTextsAreNone) {
  for (const char* const text :
       {"",          ".",       ":389",       "dc1:",          "dc1:0",
        "dc1:65536", "dc1:38x", "dc1:-1",     "dc1:389:1",     "dc 1",
        "dc1/",      "dc1?",    "ldap://dc1", "d\xC3\xB6main", "2001:db8::7",
        "[::1",      "[dc1]",   "[]",         "[:::1]x",       "a%2fb",
        ".dc1"}) {
    EXPECT_EQ(Read(text), "none") << text;
  }
}

std::string Referred(const std::vector<std::string>& addresses) {
  const auto server = ServerOfReferral(addresses);
  return server ? server->Text() : "none";
}

TEST(Referral, NamesTheFirstServerThatItNames) {
  EXPECT_EQ(Referred({"ldap://DC1.x.test/CN=Ada,DC=x,DC=test"}), "dc1.x.test");
  EXPECT_EQ(Referred({"LDAP://dc1.x.test:3890/DC=x??base"}), "dc1.x.test:3890");
  EXPECT_EQ(Referred({"ldap://dc1.x.test?x"}), "dc1.x.test");
  EXPECT_EQ(Referred({"ldap://[2001:db8::7]:390/x"}), "[2001:db8::7]:390");
  EXPECT_EQ(Referred({"ldaps://dc0.x.test/", "ldap:///DC=x", "ldap://dc1.x.test"}), "dc1.x.test");
}

TEST(Referral, OtherAddressesNameNone) {
  EXPECT_EQ(Referred({}), "none");
  for (const char* const address : {"", "ldap:", "ldap://", "ldap:///DC=x", "ldaps://dc1.x.test",
                                    "ldapi://%2ftmp", "cldap://dc1", "http://dc1", "ldap://a@dc1/x",
                                    "ldap://d c1/x", "ldap://dc1:0/x", "dc1.x.test"}) {
    EXPECT_EQ(Referred({address}), "none") << address;
  }
}

TEST(NamingContexts, AnObjectLiesInTheDeepestThatItsNameEndsWith) {
  const NamingContexts contexts({"DC=x,DC=test", "CN=Configuration,DC=x,DC=test",
                                 "CN=Schema,CN=Configuration,DC=x,DC=test", ""});
  EXPECT_EQ(contexts.BaseOf("CN=Ada,OU=Staff,DC=x,DC=test"), "DC=x,DC=test");
  EXPECT_EQ(contexts.BaseOf("cn=ada,dc=X,dc=TEST"), "DC=x,DC=test");
  EXPECT_EQ(contexts.BaseOf("DC=x,DC=test"), "DC=x,DC=test");
  EXPECT_EQ(contexts.BaseOf("CN=a,CN=Schema,CN=Configuration,DC=x,DC=test"),
            "CN=Schema,CN=Configuration,DC=x,DC=test");
  EXPECT_EQ(contexts.BaseOf("CN=Sites,CN=Configuration,DC=x,DC=test"),
            "CN=Configuration,DC=x,DC=test");
  EXPECT_EQ(contexts.BaseOf("CN=Ada,DC=other,DC=test"), "");
  EXPECT_EQ(contexts.BaseOf("CN=Ada,ADC=x,DC=test"), "");
  EXPECT_EQ(contexts.BaseOf(""), "");
  EXPECT_EQ(NamingContexts().BaseOf("DC=x"), "");
}

TEST(NameFilter, FindsTheNamesAndNothingElse) {
  EXPECT_EQ(FilterOfNames(std::vector<std::string>{"CN=Ada,DC=x"}),
            "(|(distinguishedName=CN=Ada,DC=x))");
  EXPECT_EQ(FilterOfNames(std::vector<std::string>{"CN=a\\, b,DC=x", "CN=*(c),DC=x"}),
            "(|(distinguishedName=CN=a\\5c, b,DC=x)(distinguishedName=CN=\\2a\\28c\\29,DC=x))");
  EXPECT_EQ(EscapeFilterValue(std::string("\0", 1)), "\\00");
  EXPECT_EQ(EscapeFilterValue("Größe 林 / \""), "Größe 林 / \"");
}

TEST(NameFilter, LooksForSiblingsByWhatNamesThem) {
  const std::vector<std::string> names = {"CN=Ada,OU=a\\, b,DC=x", "cn=*(c),OU=a\\, b,DC=x",
                                          "CN=Größe,OU=a\\, b,DC=x", "CN=Bo,OU=A\\, b,DC=x"};
  EXPECT_EQ(CountSiblings(names, 9), 3U);
  EXPECT_EQ(CountSiblings(names, 2), 2U);
  EXPECT_EQ(FilterOfSiblings(std::span(names).first(3)), "(|(CN=Ada)(cn=\\2a\\28c\\29)(CN=Größe))");
  // Others than units may have an `ou`, and many the same.
  for (const char* const other :
       {"", "CN=Ada", "CN=a\\, b,DC=x", "DC=y,DC=x", "OU=y,DC=x", "CN=,DC=x", "CN=a+OU=b,DC=x",
        "CN=\"a\",DC=x", "no name at all,DC=x"}) {
    EXPECT_EQ(CountSiblings(std::vector<std::string>{other}, 9), 0U) << other;
  }
  EXPECT_EQ(CountSiblings({}, 9), 0U);
}

/// What an entry's attributes look like, one line each, and what is still to be asked for.
std::string File(AttributeMap attributes, std::size_t first = 0) {
  std::vector<UnfinishedAttribute> unfinished;
  if (!FileRanges(attributes, first, unfinished)) return "of no use";
  std::string requests;
  for (const UnfinishedAttribute& part : unfinished) requests += part.Request() + "\n";
  std::string text;
  for (const auto& [name, values] : attributes) {
    text += name + ":";
    for (const std::string& value : values) text += " " + value;
    text += "\n";
  }
  return text + requests;
}

TEST(ValueRanges, PartsAreFiledUnderTheBareName) {
  EXPECT_EQ(File({{"member;range=0-1", {"a", "b"}}, {"name", {"n"}}}),
            "member: a b\nname: n\nmember;range=2-*\n");
  EXPECT_EQ(File({{"member;range=2-*", {"c"}}}, 2), "member: c\n");
  EXPECT_EQ(File({{"Member;RANGE=1499-1499", {"a"}}}, 1499), "Member: a\nMember;range=1500-*\n");
}

TEST(ValueRanges, ThePlainNameMayStandBesideItsPart) {
  EXPECT_EQ(File({{"member", {}}, {"member;range=0-0", {"a"}}}), "member: a\nmember;range=1-*\n");
}

TEST(ValueRanges, OtherOptionsStay) {
  EXPECT_EQ(File({{"userCertificate;binary", {"c"}}, {"ranged", {"r"}}}),
            "ranged: r\nuserCertificate;binary: c\n");
}

TEST(ValueRanges, ARangeThatIsNoneIsOfNoUse) {
  for (const char* const name :
       {"member;range=", "member;range=0-", "member;range=0", "member;range=-*",
        "member;range=0-99999999999999999999999", "member;range=0-1x", "member;range=0-**",
        "member;range=0-18446744073709551615"}) {
    EXPECT_EQ(File({{name, {"a"}}}), "of no use") << name;
  }
}

TEST(ValueRanges, ARangeThatIsNotWhatItSaysIsOfNoUse) {
  // With values missing, a list would be written back without them.
  EXPECT_EQ(File({{"member;range=0-1499", {"a"}}}), "of no use");
  EXPECT_EQ(File({{"member;range=0-0", {"a", "b"}}}), "of no use");
  EXPECT_EQ(File({{"member;range=1-0", {"a"}}}), "of no use");
  // Another part than the one that was asked for.
  EXPECT_EQ(File({{"member;range=1-*", {"a"}}}), "of no use");
  EXPECT_EQ(File({{"member;range=0-0", {"a"}}}, 1), "of no use");
  // Twice the same attribute.
  EXPECT_EQ(File({{"member", {"a"}}, {"member;range=0-*", {"a"}}}), "of no use");
  EXPECT_EQ(File({{"member;range=0-*", {"a"}}, {"Member;Range=0-0", {"a"}}}), "of no use");
}

TEST(DeletedName, IsRemovedByItsIdentifier) {
  EXPECT_EQ(NameForRemoval("CN=Uta\\0ADEL:5d0e8c1a-7a54-4c0e-9d7e-3f1f5a2b6c90,CN=Deleted "
                           "Objects,DC=example"),
            "<GUID=5d0e8c1a-7a54-4c0e-9d7e-3f1f5a2b6c90>");
}

TEST(DeletedName, AnyOtherIsRemovedAsItIs) {
  for (const char* const name :
       {"CN=Uta,DC=example", "", "CN=Uta\\0ADEL:5d0e8c1a,DC=example",
        "CN=Uta\\0ADEL:5d0e8c1a-7a54-4c0e-9d7e-3f1f5a2b6c90",
        "CN=Uta\\0ADEL:5d0e8c1a-7a54-4c0e-9d7e-3f1f5a2b6x90,DC=example",
        "CN=Uta\\0ADEL:5d0e8c1a-7a54-4c0e-9d7e-3f1f5a2b6c90>,DC=example"}) {
    EXPECT_EQ(NameForRemoval(name), name);
  }
}

TEST(DeletedName, OnlyRemovedNamesAreSentOtherwise) {
  const std::string name = "CN=Uta\\0ADEL:5d0e8c1a-7a54-4c0e-9d7e-3f1f5a2b6c90,DC=example";
  Schema schema;
  schema.Add("names", {.syntax = Syntax::kDistinguishedName});
  schema.Add("text", {});
  using Operation = Modification::Operation;
  const std::vector<Modification> changes = {{Operation::kDelete, "names", {"CN=a", name}},
                                             {Operation::kAdd, "names", {name}},
                                             {Operation::kDelete, "text", {name}},
                                             {Operation::kDelete, "unknown", {name}}};
  const std::vector<Modification> sent = WithNamesForRemoval(schema, changes).value();
  ASSERT_EQ(sent.size(), changes.size());
  EXPECT_EQ(sent[0].values,
            (AttributeValues{"CN=a", "<GUID=5d0e8c1a-7a54-4c0e-9d7e-3f1f5a2b6c90>"}));
  for (std::size_t at = 1; at < sent.size(); ++at) EXPECT_EQ(sent[at].values, changes[at].values);
  EXPECT_FALSE(WithNamesForRemoval(schema, std::span(changes).subspan(1)).has_value());
}

}  // namespace
}  // namespace pelora::ldap
