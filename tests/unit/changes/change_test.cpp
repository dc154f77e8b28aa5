// SPDX-License-Identifier: Apache-2.0
#include "hosts/changes/change.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "hosts/changes/guarded_request.h"
#include "hosts/changes/result.h"
#include "hosts/changes/whole_list.h"
#include "hosts/ldap/ldap_status.h"

namespace pelora::changes {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using Operation = ldap::Modification::Operation;

class ChangeTest : public ::testing::Test {
 protected:
  ChangeTest() {
    schema_.Add("text", {.is_single_valued = true});
    schema_.Add("texts", {});
    schema_.Add("number", {.syntax = ldap::Syntax::kInteger, .is_single_valued = true});
    schema_.Add("name", {.syntax = ldap::Syntax::kDistinguishedName, .is_single_valued = true});
  }

  [[nodiscard]] bool ChangesSomething(ValueChange value) const {
    Change change{.dn = "CN=a", .attributes = {std::move(value)}};
    DropWhatChangesNothing(schema_, change);
    return !change.attributes.empty();
  }
  /// What is sent, one line a modification.
  [[nodiscard]] std::vector<std::string> Sent(const std::vector<ValueChange>& values) const {
    std::vector<std::string> lines;
    for (const ldap::Modification& sent :
         GuardedRequest(schema_, {.dn = "CN=a", .attributes = values})) {
      std::string line = sent.operation == Operation::kDelete ? "delete" : "add";
      line += " " + sent.attribute + ":";
      for (const std::string& value : sent.values) line += " " + value;
      lines.push_back(line);
    }
    return lines;
  }
  [[nodiscard]] Standing StandingNow(const std::vector<ValueChange>& values,
                                     const ldap::AttributeMap& there) const {
    return StandingOf(schema_, {.dn = "CN=a", .attributes = values},
                      {.dn = "CN=a", .attributes = there});
  }

  ldap::Schema schema_;
};

TEST_F(ChangeTest, WhatIsAsItIsWantedChangesNothing) {
  EXPECT_FALSE(ChangesSomething({.attribute = "text", .seen = {"a"}, .wanted = {"a"}}));
  EXPECT_FALSE(ChangesSomething({.attribute = "text", .seen = {}, .wanted = {}}));
  EXPECT_TRUE(ChangesSomething({.attribute = "text", .seen = {"a"}, .wanted = {}}));
  EXPECT_TRUE(ChangesSomething({.attribute = "text", .seen = {}, .wanted = {"a"}}));
  EXPECT_TRUE(ChangesSomething({.attribute = "text", .seen = {"anna"}, .wanted = {"Anna"}}));
  EXPECT_FALSE(ChangesSomething({.attribute = "number", .seen = {"7"}, .wanted = {"007"}}));
  EXPECT_TRUE(ChangesSomething({.attribute = "number", .seen = {}, .wanted = {"0"}}));
  EXPECT_FALSE(ChangesSomething({.attribute = "name", .seen = {"CN=Ä"}, .wanted = {"cn=ä"}}));
  EXPECT_FALSE(ChangesSomething({"texts", true, {"a", "b"}, {"b", "a"}}));
  EXPECT_TRUE(ChangesSomething({"texts", true, {"a", "b"}, {"a"}}));
  EXPECT_TRUE(ChangesSomething({"unknown", false, {"a"}, {"b"}}));
}

TEST_F(ChangeTest, AdditionsAndDeletionsAreNeverNothing) {
  Change change{.kind = Change::Kind::kAdd, .dn = "CN=a", .attributes = {{.attribute = "text"}}};
  DropWhatChangesNothing(schema_, change);
  EXPECT_THAT(change.attributes, SizeIs(1));
}

TEST_F(ChangeTest, WhatWasSeenIsDeletedBeforeWhatIsWantedIsAdded) {
  EXPECT_THAT(Sent({{.attribute = "number", .seen = {"1"}, .wanted = {"2"}},
                    {.attribute = "text", .seen = {}, .wanted = {"x"}},
                    {.attribute = "name", .seen = {"CN=b"}, .wanted = {}}}),
              ElementsAre("delete number: 1", "add number: 2", "add text: x", "delete name: CN=b"));
}

TEST_F(ChangeTest, OfAListWhatIsKeptIsNotSent) {
  EXPECT_THAT(Sent({{"texts", true, {"a", "b", "c"}, {"c", "d", "a"}}}),
              ElementsAre("delete texts: b", "add texts: d"));
  EXPECT_THAT(Sent({{"texts", true, {"a"}, {"A"}}}),
              ElementsAre("delete texts: a", "add texts: A"));
}

TEST_F(ChangeTest, AValueThatIsNeitherSeenNorWantedIsAConflict) {
  const Standing standing = StandingNow({{.attribute = "number", .seen = {"1"}, .wanted = {"2"}},
                                         {.attribute = "text", .seen = {}, .wanted = {"x"}}},
                                        {{"number", {"3"}}, {"text", {"y"}}});
  ASSERT_THAT(standing.conflicts, SizeIs(2));
  EXPECT_EQ(standing.conflicts[0].attribute, "number");
  EXPECT_THAT(standing.conflicts[0].seen, ElementsAre("1"));
  EXPECT_THAT(standing.conflicts[0].wanted, ElementsAre("2"));
  EXPECT_THAT(standing.conflicts[0].there, ElementsAre("3"));
  EXPECT_EQ(TextOf(standing.conflicts[1]),
            "text was not set when it was read, is y now, and was to become x");
}

TEST_F(ChangeTest, WhatIsWantedAlreadyIsTakenOff) {
  const Standing standing = StandingNow({{.attribute = "number", .seen = {"1"}, .wanted = {"2"}},
                                         {.attribute = "text", .seen = {"a"}, .wanted = {"b"}}},
                                        {{"number", {"02"}}, {"text", {"a"}}});
  EXPECT_THAT(standing.conflicts, IsEmpty());
  EXPECT_TRUE(standing.is_less);
  ASSERT_THAT(standing.rest.attributes, SizeIs(1));
  EXPECT_EQ(standing.rest.attributes[0].attribute, "text");
}

TEST_F(ChangeTest, OfAListWhatSomebodyElseDidIsTakenOff) {
  const Standing standing =
      StandingNow({{"texts", true, {"a", "b"}, {"b", "c", "d"}}}, {{"texts", {"b", "c", "other"}}});
  EXPECT_THAT(standing.conflicts, IsEmpty());
  EXPECT_TRUE(standing.is_less);
  ASSERT_THAT(standing.rest.attributes, SizeIs(1));
  EXPECT_THAT(standing.rest.attributes[0].seen, IsEmpty());
  EXPECT_THAT(standing.rest.attributes[0].wanted, ElementsAre("d"));
}

TEST_F(ChangeTest, WhatIsAsItWasSeenIsLeftWhole) {
  const Standing standing = StandingNow(
      {{.attribute = "text", .seen = {"a"}, .wanted = {"b"}}, {"texts", true, {"x"}, {}}},
      {{"text", {"a"}}, {"texts", {"x"}}});
  EXPECT_FALSE(standing.is_less);
  EXPECT_THAT(standing.rest.attributes, SizeIs(2));
}

TEST_F(ChangeTest, AListOfWhichAllIsKnownIsAsSeenAsWantedOrTouched) {
  const auto standing = [this](const AttributeValues& there, const AttributeValues& seen,
                               const AttributeValues& wanted) {
    const Standing now =
        StandingOf(schema_, {.dn = "CN=a", .attributes = {{"texts", true, seen, wanted, true}}},
                   {.dn = "CN=a", .attributes = {{"texts", there}}}, Lists::kUntouched);
    if (!now.conflicts.empty()) return std::string("touched");
    if (now.rest.attributes.empty()) return std::string("as wanted");
    std::string sent;
    for (const std::string& line : Sent(now.rest.attributes)) sent += line + "; ";
    return sent;
  };
  EXPECT_EQ(standing({"c", "a", "b"}, {"a", "b", "c"}, {"a"}), "delete texts: c b; ");
  EXPECT_EQ(standing({"a"}, {"a", "b"}, {"a"}), "as wanted");
  EXPECT_EQ(standing({"a", "b", "x"}, {"a", "b"}, {"a"}), "touched");
  EXPECT_EQ(standing({"b"}, {"a", "b"}, {"a"}), "touched");
  EXPECT_EQ(standing({"a", "x"}, {"a", "b"}, {"a"}), "touched");
  EXPECT_EQ(standing({}, {"a"}, {"a", "b"}), "touched");
  EXPECT_EQ(standing({}, {}, {"a"}), "add texts: a; ");
  EXPECT_EQ(standing({"x"}, {}, {"a"}), "touched");
  EXPECT_EQ(standing({"a"}, {"a"}, {}), "delete texts: a; ");
  // As the directory compares: what goes is spelled as it is there.
  EXPECT_EQ(standing({"B", "A"}, {"a", "b"}, {"a"}), "delete texts: B; ");
  EXPECT_EQ(standing({"A"}, {"a", "b"}, {"a"}), "as wanted");
  EXPECT_EQ(standing({"A"}, {"A"}, {"a"}), "delete texts: A; add texts: a; ");
}

TEST_F(ChangeTest, WhatIsLeftOfAWholeListsChangeIsWhole) {
  const Standing standing = StandingNow({{"texts", true, {"a", "b"}, {"a", "c", "d"}, true}},
                                        {{"texts", {"a", "b", "d", "theirs"}}});
  ASSERT_THAT(standing.rest.attributes, SizeIs(1));
  const ValueChange& rest = standing.rest.attributes.front();
  EXPECT_TRUE(rest.is_whole);
  EXPECT_THAT(rest.seen, ElementsAre("a", "b", "d", "theirs"));
  EXPECT_THAT(rest.wanted, ElementsAre("a", "d", "theirs", "c"));
}

TEST_F(ChangeTest, AListsChangeIsCompletedByWhatIsThere) {
  Change change{.dn = "CN=a", .attributes = {{"texts", true, {"b", "gone"}, {"c"}}}};
  CompleteLists(schema_, {.dn = "CN=a", .attributes = {{"texts", {"a", "B"}}}}, change);
  EXPECT_TRUE(HasWholeList(change));
  EXPECT_THAT(change.attributes.front().seen, ElementsAre("a", "B", "gone"));
  EXPECT_THAT(change.attributes.front().wanted, ElementsAre("a", "c"));
}

TEST_F(ChangeTest, TheUndoExchangesWhatWasSeenAndWhatIsWanted) {
  const Change undo = UndoOf({.dn = "CN=a", .attributes = {{"texts", true, {"a"}, {"b", "c"}}}});
  EXPECT_EQ(undo.kind, Change::Kind::kModify);
  EXPECT_EQ(undo.dn, "CN=a");
  ASSERT_THAT(undo.attributes, SizeIs(1));
  EXPECT_TRUE(undo.attributes[0].is_list);
  EXPECT_THAT(undo.attributes[0].seen, ElementsAre("b", "c"));
  EXPECT_THAT(undo.attributes[0].wanted, ElementsAre("a"));
}

TEST_F(ChangeTest, AnAdditionIsTakenBackByADeletionWithoutItsPassword) {
  const Change undo = UndoOf({.kind = Change::Kind::kAdd,
                              .dn = "CN=a",
                              .attributes = {{.attribute = "text", .wanted = {"x"}},
                                             {.attribute = "UnicodePwd", .wanted = {"secret"}}}});
  EXPECT_EQ(undo.kind, Change::Kind::kDelete);
  ASSERT_THAT(undo.attributes, SizeIs(1));
  EXPECT_THAT(undo.attributes[0].seen, ElementsAre("x"));
  EXPECT_THAT(UndoOf(undo).attributes, IsEmpty());
  // It is made again only by who knows of what classes it was.
  Change known = undo;
  known.attributes.push_back({.attribute = "objectClass", .seen = {"top"}});
  const Change again = UndoOf(known);
  EXPECT_EQ(again.kind, Change::Kind::kAdd);
  ASSERT_THAT(again.attributes, SizeIs(2));
  EXPECT_THAT(again.attributes[0].wanted, ElementsAre("x"));
  EXPECT_THAT(again.attributes[1].wanted, ElementsAre("top"));
}

TEST(ResultTest, OutcomesHaveOneWordEach) {
  for (std::size_t at = 0; at < kOutcomeCount; ++at) {
    const auto outcome = static_cast<Outcome>(at);
    EXPECT_EQ(OutcomeOfWord(WordOf(outcome)), outcome);
  }
  EXPECT_EQ(WordOf(Outcome::kUnknown), "unknown");
  EXPECT_EQ(OutcomeOfWord("done"), std::nullopt);
}

TEST(ResultTest, WhatWasSentAndNotAnsweredIsUnknown) {
  EXPECT_EQ(NotDone("CN=a", {ldap::kLdapTimeout, "?"}).outcome, Outcome::kUnknown);
  const Result failed = NotDone("CN=a", {ldap::kLdapInsufficientAccessRights, "no right"});
  EXPECT_EQ(failed.outcome, Outcome::kFailed);
  EXPECT_EQ(failed.message, "no right");
  EXPECT_EQ(failed.code, E_ACCESSDENIED);
}

TEST(ResultTest, AConflictTellsBytesAsTheirNumber) {
  EXPECT_EQ(TextOf({"photo", {std::string("\xFF\x00", 2)}, {}, {"a", "b"}}),
            "photo was 2 bytes when it was read, is a; b now, and was to become not set");
}

}  // namespace
}  // namespace pelora::changes
