// SPDX-License-Identifier: Apache-2.0
#include "hosts/changes/ldif_changes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "hosts/ldap/base64.h"

namespace pelora::changes {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

/// The schema of these tests: everything that ends in "s" is a list.
ldap::Schema MakeSchema() {
  ldap::Schema schema;
  schema.Add("mail", {.is_single_valued = true});
  schema.Add("mails", {});
  schema.Add("number", {.syntax = ldap::Syntax::kInteger, .is_single_valued = true});
  schema.Add("bytes", {.syntax = ldap::Syntax::kOctets});
  return schema;
}

const ldap::Schema kSchema = MakeSchema();

/// Everything of some changes as text, so that they can be compared.
std::string ToText(const std::vector<Change>& changes) {
  std::string text;
  for (const Change& change : changes) {
    text += std::to_string(static_cast<int>(change.kind)) + " " + change.dn + "\n";
    for (const ValueChange& value : change.attributes) {
      text += value.attribute + (value.is_list ? " list" : "");
      for (const std::string& seen : value.seen) text += " -" + ldap::EncodeBase64(seen);
      for (const std::string& wanted : value.wanted) text += " +" + ldap::EncodeBase64(wanted);
      text += "\n";
    }
  }
  return text;
}

std::vector<Change> ReadBack(const std::string& text) {
  std::vector<Change> changes;
  const ldap::StoreStatus status = ReadChanges(kSchema, text, changes);
  EXPECT_TRUE(status.Ok()) << status.text << "\n" << text;
  return changes;
}

std::string Refusal(const std::string& text) {
  std::vector<Change> changes(1);
  const ldap::StoreStatus status = ReadChanges(kSchema, text, changes);
  EXPECT_EQ(status.code, 80) << text;
  EXPECT_THAT(changes, IsEmpty());
  return status.text;
}

TEST(LdifChanges, WhatAListHoldsStandsInComments) {
  const Change change{
      .dn = "CN=Ada,DC=x",
      .attributes = {{"mails", true, {"b@x", "c@x", "\xC3\xA4@x"}, {"c@x", "\xC3\xA4@x"}, true},
                     {"number", false, {}, {"2"}}}};
  const std::string text = ToLdif(kSchema, change, Lists::kUntouched);
  EXPECT_EQ(text,
            "dn: CN=Ada,DC=x\n"
            "changetype: modify\n"
            "# only if mails: b@x\n"
            "# only if mails: c@x\n"
            "# only if mails:: w6RAeA==\n"
            "delete: mails\n"
            "mails: b@x\n"
            "-\n"
            "add: number\n"
            "number: 2\n"
            "-\n"
            "\n");
  const std::vector<Change> read = ReadBack(text);
  EXPECT_EQ(ToText(read), ToText({change}));
  EXPECT_TRUE(read.at(0).attributes.at(0).is_whole);
  EXPECT_FALSE(read.at(0).attributes.at(1).is_whole);
  const Change empty{.dn = "CN=Ada,DC=x", .attributes = {{"mails", true, {}, {"a@x"}, true}}};
  const std::string of_empty = ToLdif(kSchema, empty, Lists::kUntouched);
  EXPECT_THAT(of_empty, HasSubstr("\n# only if mails:\n"));
  const std::vector<Change> read_empty = ReadBack(of_empty);
  EXPECT_EQ(ToText(read_empty), ToText({empty}));
  EXPECT_TRUE(read_empty.at(0).attributes.at(0).is_whole);
  // What is sent is not what is asked of a list.
  EXPECT_EQ(ToLdif(kSchema, empty).find('#'), std::string::npos);
  EXPECT_FALSE(ReadBack(ToLdif(kSchema, empty)).at(0).attributes.at(0).is_whole);
}

TEST(LdifChanges, AModificationCarriesItsGuard) {
  EXPECT_EQ(ToLdif(kSchema, {.dn = "CN=Ada,DC=x",
                             .attributes = {{"number", false, {"1"}, {"2"}},
                                            {"mail", false, {}, {"a@x"}},
                                            {"mails", true, {"b@x", "c@x"}, {"c@x", "d@x"}}}}),
            "dn: CN=Ada,DC=x\n"
            "changetype: modify\n"
            "delete: number\n"
            "number: 1\n"
            "-\n"
            "add: number\n"
            "number: 2\n"
            "-\n"
            "add: mail\n"
            "mail: a@x\n"
            "-\n"
            "delete: mails\n"
            "mails: b@x\n"
            "-\n"
            "add: mails\n"
            "mails: d@x\n"
            "-\n"
            "\n");
}

TEST(LdifChanges, AChangeOfNothingIsNothing) {
  EXPECT_EQ(ToLdif(kSchema, {.dn = "CN=Ada", .attributes = {{"number", false, {"1"}, {"1"}}}}), "");
}

TEST(LdifChanges, AnAdditionBeginsWithItsClass) {
  EXPECT_EQ(ToLdif(kSchema, {.kind = Change::Kind::kAdd,
                             .dn = "CN=Ada,DC=x",
                             .attributes = {{"mails", true, {}, {"a", "b"}},
                                            {"objectClass", true, {}, {"contact"}}}}),
            "dn: CN=Ada,DC=x\n"
            "changetype: add\n"
            "objectClass: contact\n"
            "mails: a\n"
            "mails: b\n"
            "\n");
}

TEST(LdifChanges, ADeletionStandsBehindItsGuard) {
  EXPECT_EQ(ToLdif(kSchema, {.kind = Change::Kind::kDelete,
                             .dn = "CN=Ada,DC=x",
                             .attributes = {{"objectClass", true, {"contact"}, {}},
                                            {"cn", false, {"Ada"}, {}},
                                            {"mail", false, {"a@x"}, {}}}}),
            "dn: CN=Ada,DC=x\n"
            "changetype: modify\n"
            "delete: mail\n"
            "mail: a@x\n"
            "-\n"
            "add: mail\n"
            "mail: a@x\n"
            "-\n"
            "\n"
            "dn: CN=Ada,DC=x\n"
            "changetype: delete\n"
            "\n");
}

TEST(LdifChanges, WhatIsNotPlainStandsInBase64) {
  const struct {
    std::string value;
    const char* line;
  } kRows[] = {
      {"plain: with a colon", "mail: plain: with a colon\n"},
      {" blank before", "mail:: IGJsYW5rIGJlZm9yZQ==\n"},
      {"blank behind ", "mail:: YmxhbmsgYmVoaW5kIA==\n"},
      {":colon", "mail:: OmNvbG9u\n"},
      {"<file:///etc/passwd", "mail:: PGZpbGU6Ly8vZXRjL3Bhc3N3ZA==\n"},
      {"#number", "mail: #number\n"},
      {"zwei\nZeilen", "mail:: endlaQpaZWlsZW4=\n"},
      {"-", "mail: -\n"},
      {"\x1B[31m", "mail:: G1szMW0=\n"},
      {std::string("a\0b", 3), "mail:: YQBi\n"},
      {"Müller", "mail:: TcO8bGxlcg==\n"},
      {"\x7F", "mail:: fw==\n"},
  };
  for (const auto& row : kRows) {
    const Change change{.dn = "CN=a", .attributes = {{"mail", false, {}, {row.value}}}};
    const std::string text = ToLdif(kSchema, change);
    EXPECT_THAT(text, HasSubstr(row.line));
    EXPECT_EQ(ToText(ReadBack(text)), ToText({change}));
  }
  EXPECT_THAT(ToLdif(kSchema, {.dn = "CN=Jürgen", .attributes = {{"mail", false, {}, {"a"}}}}),
              HasSubstr("dn:: Q049SsO8cmdlbg==\n"));
}

TEST(LdifChanges, LinesAreFolded) {
  const Change change{.dn = "CN=" + std::string(300, 'n'),
                      .attributes = {{"mail", false, {std::string(1000, 'x')}, {"a b"}}}};
  const std::string text = ToLdif(kSchema, change);
  std::size_t begin = 0;
  while (begin < text.size()) {
    const std::size_t end = text.find('\n', begin);
    EXPECT_LE(end - begin, 76U);
    begin = end + 1;
  }
  EXPECT_EQ(ToText(ReadBack(text)), ToText({change}));
}

/// A value of random bytes, with those that mean something in LDIF among them.
std::string RandomValue(std::mt19937& random) {
  constexpr std::string_view kSigns = "a b:<-#\n\r\0=+/";
  std::string value;
  const std::size_t length = 1 + random() % 120;
  for (std::size_t at = 0; at < length; ++at) {
    value +=
        random() % 2 == 0 ? kSigns[random() % kSigns.size()] : static_cast<char>(random() % 256);
  }
  return value;
}

TEST(LdifChanges, EveryChangeIsReadBackAsItWas) {
  std::mt19937 random(4711);
  std::vector<Change> changes;
  std::string text = "version: 1\n";
  for (int round = 0; round < 500; ++round) {
    Change change{.dn = "CN=" + RandomValue(random), .attributes = {}};
    change.kind = static_cast<Change::Kind>(random() % 3);
    ValueChange one{.attribute = "mail"};
    ValueChange list{.attribute = "mails", .is_list = true};
    if (change.kind != Change::Kind::kAdd) {
      one.seen = {"s" + RandomValue(random)};
      list.seen = {"x" + RandomValue(random), "y" + RandomValue(random)};
    }
    if (change.kind != Change::Kind::kDelete) {
      one.wanted = {"w" + RandomValue(random)};
      list.wanted = {"z" + RandomValue(random)};
    }
    change.attributes = {one, list};
    text += ToLdif(kSchema, change);
    changes.push_back(change);
  }
  EXPECT_EQ(ToText(ReadBack(text)), ToText(changes));
}

TEST(LdifChanges, ReadsWhatOthersWrite) {
  const std::vector<Change> changes = ReadBack(
      "# a comment\r\n that goes on\r\n"
      "version: 1\r\n\r\n"
      "DN:CN=Ada,DC=x\r\n"
      "ChangeType: Modify\r\n"
      "delete: MAIL\r\n"
      "mail:   a@x\r\n"
      "-\r\n"
      "add: mail\r\n"
      "mail:: YkB4\r\n"
      "\r\n\r\n"
      "dn: CN=Ada,DC=x\r\n"
      "changetype: delete");
  ASSERT_THAT(changes, SizeIs(2));
  ASSERT_THAT(changes[0].attributes, SizeIs(1));
  EXPECT_THAT(changes[0].attributes[0].seen, ElementsAre("a@x"));
  EXPECT_THAT(changes[0].attributes[0].wanted, ElementsAre("b@x"));
  // A change in front of a deletion is no guard of it.
  EXPECT_EQ(changes[1].kind, Change::Kind::kDelete);
  EXPECT_THAT(changes[1].attributes, IsEmpty());
}

TEST(LdifChanges, WhatCarriesNoGuardIsRefusedWithItsLine) {
  const std::string head = "dn: CN=a\nchangetype: modify\n";
  const struct {
    std::string text;
    const char* reason;
  } kRows[] = {
      {head + "replace: mail\nmail: x\n-\n", "a modification that does not say what it replaces"},
      {head + "delete: mail\n-\n", "a modification without values"},
      {head + "add: mail\n", "a modification without values"},
      {head + "increment: number\nnumber: 1\n",
       "a modification that does not say what it replaces"},
      {head + "add: mail\nmail: x\n-\ndelete: mail\nmail: y\n-\n",
       "an attribute is modified twice"},
      {head + "add: mail\nmail: x\n-\nadd: MAIL\nmail: y\n-\n", "an attribute is modified twice"},
      {head + "add: mail\nother: x\n-\n", "the record that begins here is no LDIF"},
      {head + "add: mail\nmail: x\nother: y\n", "the record that begins here is no LDIF"},
      {head + "add: mail\nmail:: x\n", "the record that begins here is no LDIF"},
      {head + "add: mail\nmail:< file:///etc/passwd\n", "the record that begins here is no LDIF"},
      {"dn: CN=a\nmail: x\n", "an entry, where changes are wanted"},
      {"dn: CN=a\n", "an entry, where changes are wanted"},
      {"dn:\nchangetype: delete\n", "the record that begins here is no LDIF"},
      {"changetype: delete\n", "the record that begins here is no LDIF"},
      {"dn: CN=a\ncontrol: 1.2.3\nchangetype: delete\n", "a control that is not understood"},
      {"dn: CN=a\nchangetype: modrdn\nnewrdn: CN=b\ndeleteoldrdn: 1\n",
       "a change that does not say which object it means"},
      {"dn: CN=a\nchangetype: rename\n",
       "a change that is no modification, addition, renaming or deletion"},
      {"dn: CN=a\nchangetype: delete\nmail: x\n", "the record that begins here is no LDIF"},
      {"dn: CN=a\nchangetype: add\n", "the record that begins here is no LDIF"},
      {"nonsense", "the record that begins here is no LDIF"},
  };
  for (const auto& row : kRows) {
    EXPECT_EQ(Refusal("dn: CN=b\nchangetype: delete\n\n" + row.text),
              std::string("line 4: ") + row.reason)
        << row.text;
  }
  EXPECT_THAT(ReadBack(""), IsEmpty());
  EXPECT_THAT(ReadBack("# nothing\n\n"), IsEmpty());
}

TEST(Base64, IsWrittenWithItsPaddingAndReadStrictly) {
  const std::pair<std::string, std::string> kRows[] = {
      {"", ""},        {"f", "Zg=="},        {"fo", "Zm8="},
      {"foo", "Zm9v"}, {"foob", "Zm9vYg=="}, {std::string("\0\xFF\xFE", 3), "AP/+"}};
  for (const auto& [bytes, text] : kRows) {
    EXPECT_EQ(ldap::EncodeBase64(bytes), text);
    EXPECT_EQ(ldap::DecodeBase64(text), bytes);
  }
  for (const char* const text : {"Z", "Zg", "Zg=", "Zg===", "Z g=", "Zg==Zg==", "====", "Zm-_"}) {
    EXPECT_EQ(ldap::DecodeBase64(text), std::nullopt) << text;
  }
}

}  // namespace
}  // namespace pelora::changes
