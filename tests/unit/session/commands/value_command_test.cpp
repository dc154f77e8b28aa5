// SPDX-License-Identifier: Apache-2.0
// What a command on addresses and lists of names comes to with an object.
#include "hosts/session/commands/value_command.h"

#include <gtest/gtest.h>

namespace pelora::session {
namespace {

using Kind = ValueCommand::Kind;
using Values = std::vector<std::string>;

ldap::Entry User(const Values& standard, const Values& others) {
  ldap::Entry entry{.dn = "CN=u,DC=x",
                    .attributes = {{"givenName", {"Ada"}}, {"sn", {"Kühn"}}, {"cn", {"Ada Kühn"}}}};
  if (!standard.empty()) entry.attributes["mail"] = standard;
  if (!others.empty()) entry.attributes["otherMailbox"] = others;
  return entry;
}

/// What comes of it, and what is written.
std::string Told(const ValueCommand& command, const ldap::Entry& entry) {
  const PlannedValues plan = Plan(command, entry);
  std::string text = plan.IsChange() ? plan.before + " -> " + plan.after : "nothing";
  if (plan.judgement.verdict == Verdict::kWrong) text = "left out";
  if (plan.judgement.verdict == Verdict::kOdd) text += ", odd";
  if (!plan.judgement.sentence.empty()) text += ": " + plan.judgement.sentence;
  for (const ldap::Modification& one : plan.modifications) {
    text += " | " + one.attribute;
    for (const std::string& value : one.values) text += " " + value;
  }
  return text;
}

ValueCommand Add(const char* pattern, bool as_default = false) {
  return {.kind = Kind::kAddAddress, .address = AddressPattern(pattern), .as_default = as_default};
}
ValueCommand Replace(const char* gone, const char* address) {
  return {.kind = Kind::kReplaceAddress,
          .address = AddressPattern(address),
          .gone = AddressPattern(gone)};
}
ValueCommand Remove(const char* gone) {
  return {.kind = Kind::kRemoveAddress, .gone = AddressPattern(gone)};
}

TEST(ValueCommand, AnAddressIsAddedAsAFurtherOneOrAsTheDefault) {
  EXPECT_EQ(Told(Add("{first}.{last}@x.example"), User({"a@x.example"}, {"b@x.example"})),
            "a@x.example (default); b@x.example -> a@x.example (default); b@x.example; "
            "ada.kuehn@x.example | otherMailbox b@x.example ada.kuehn@x.example");
  EXPECT_EQ(Told(Add("{first}@x.example", true), User({"a@x.example"}, {"b@x.example"})),
            "a@x.example (default); b@x.example -> ada@x.example (default); b@x.example; "
            "a@x.example | mail ada@x.example | otherMailbox b@x.example a@x.example");
  EXPECT_EQ(Told(Add("{first}@x.example"), User({}, {})),
            "none -> ada@x.example (default) | mail ada@x.example")
      << "the first one is the default one";
}

TEST(ValueCommand, AnAddressThatIsThereIsNotAddedAgain) {
  EXPECT_EQ(Told(Add("A@x.example"), User({"a@x.example"}, {})),
            "nothing: It has this address already.");
  EXPECT_EQ(Told(Add("b@x.example"), User({"a@x.example"}, {"B@x.example"})),
            "nothing: It has this address already.");
  EXPECT_EQ(Told(Add("a@x.example", true), User({"A@x.example"}, {})),
            "nothing: It has this address already.");
  EXPECT_EQ(Told(Add("b@x.example", true), User({"a@x.example"}, {"B@x.example"})),
            "a@x.example (default); B@x.example -> b@x.example (default); a@x.example | mail "
            "b@x.example | otherMailbox a@x.example")
      << "it changes its place";
}

TEST(ValueCommand, WhatIsTypedIsJudgedForEachObject) {
  EXPECT_EQ(Told(Add("{first} {last}@x.example"), User({"a@x.example"}, {})),
            "left out: ada kuehn@x.example: An address has no blanks.");
  EXPECT_EQ(Told(Add("{logon}@x.example"), User({"a@x.example"}, {})),
            "left out: It has no logon name.");
  EXPECT_EQ(Told(Add("{first}@intern"), User({"a@x.example"}, {})),
            "a@x.example (default) -> a@x.example (default); ada@intern, odd: ada@intern: The "
            "domain has no dot: is it the whole of it? | otherMailbox ada@intern");
}

TEST(ValueCommand, AddressesAreReplacedWhereTheyStand) {
  EXPECT_EQ(Told(Replace("*@old.example", "*@new.example"),
                 User({"a@old.example"}, {"b@OLD.example", "c@x.example"})),
            "a@old.example (default); b@OLD.example; c@x.example -> a@new.example (default); "
            "b@new.example; c@x.example | mail a@new.example | otherMailbox b@new.example "
            "c@x.example");
  EXPECT_EQ(Told(Replace("*@old.example", "{first}@new.example"),
                 User({"a@old.example"}, {"b@old.example"})),
            "a@old.example (default); b@old.example -> ada@new.example (default) | mail "
            "ada@new.example | otherMailbox")
      << "what comes twice by that stands there once";
  EXPECT_EQ(Told(Replace("*@old.example", "*@new.example"), User({"a@x.example"}, {})),
            "nothing: It has no such address, or is so already.");
}

TEST(ValueCommand, AddressesAreRemovedButForTheLastOne) {
  EXPECT_EQ(Told(Remove("*@old.example"),
                 User({"a@x.example"}, {"b@old.example", "c@old.example", "d@x.example"})),
            "a@x.example (default); b@old.example; c@old.example; d@x.example -> a@x.example "
            "(default); d@x.example | otherMailbox d@x.example");
  EXPECT_EQ(Told(Remove("*@old.example"), User({"a@old.example"}, {"b@x.example"})),
            "a@old.example (default); b@x.example -> b@x.example (default): b@x.example becomes "
            "the default address. | mail b@x.example | otherMailbox");
  EXPECT_EQ(Told(Remove("*"), User({"a@old.example"}, {"b@x.example"})),
            "left out: The last address cannot be removed, only replaced.");
  EXPECT_EQ(Told(Remove("z@x.example"), User({"a@old.example"}, {})),
            "nothing: It has no such address.");
}

TEST(ValueCommand, NamesArePutInAndTakenOut) {
  ldap::Entry entry = User({}, {});
  entry.attributes["peloraSendAsPrivilege"] = {"CN=a,DC=x", "CN=b,DC=x"};
  ValueCommand command{.kind = Kind::kAddNames,
                       .attribute = "peloraSendAsPrivilege",
                       .names = {"cn=A, dc=x", "CN=c,DC=x"}};
  EXPECT_EQ(Told(command, entry),
            "CN=a,DC=x; CN=b,DC=x -> CN=a,DC=x; CN=b,DC=x; CN=c,DC=x | peloraSendAsPrivilege "
            "CN=a,DC=x CN=b,DC=x CN=c,DC=x");
  command.kind = Kind::kRemoveNames;
  EXPECT_EQ(Told(command, entry),
            "CN=a,DC=x; CN=b,DC=x -> CN=b,DC=x | peloraSendAsPrivilege CN=b,DC=x");
  command.names = {"CN=c,DC=x"};
  EXPECT_EQ(Told(command, entry), "nothing: None of them is in the list.");
}

TEST(ValueCommand, SaysWhyItCannotBeDone) {
  EXPECT_EQ(Add("").WhyWrong(), "There is no address yet.");
  EXPECT_EQ(Add("*@x.example").WhyWrong(), "An address has no \"*\".");
  EXPECT_EQ(Replace("*@x.example", "").WhyWrong(), "There is no address yet.");
  EXPECT_EQ(Replace("*@x.example", "*@y.example").WhyWrong(), "");
  EXPECT_EQ(Remove("{x}@x.example").WhyWrong(),
            "{x} is not known; there are {logon}, {first}, {last} and {name}.");
  EXPECT_EQ((ValueCommand{.kind = Kind::kAddNames, .attribute = "x"}.WhyWrong()),
            "No objects are chosen.");
}

}  // namespace
}  // namespace pelora::session
