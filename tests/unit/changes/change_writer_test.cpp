// SPDX-License-Identifier: Apache-2.0
#include "hosts/changes/change_writer.h"

#include "hosts/changes/looked_up.h"
#include "hosts/ldap/ldap_status.h"
#include "tests/unit/changes/changes_bench.h"

namespace pelora::changes {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class ChangeWriterTest : public ChangesBench {
 protected:
  Result Write(ValueChange value) { return writer_.Write(MakeChange(kUser, std::move(value))); }
  static ValueChange Quota(const AttributeValues& seen, const AttributeValues& wanted) {
    return {.attribute = "peloraQuotaHard", .seen = seen, .wanted = wanted};
  }

  ChangeWriter writer_{interrupted_, &log_};
};

TEST_F(ChangeWriterTest, WritesWhatIsAsItWasSeen) {
  Store("peloraQuotaHard", {"100"});
  const Result result = Write(Quota({"100"}, {"200"}));
  EXPECT_EQ(result.outcome, Outcome::kChanged);
  EXPECT_EQ(result.dn, kUser);
  EXPECT_EQ(result.message, "");
  EXPECT_THAT(Stored("peloraQuotaHard"), ElementsAre("200"));
  EXPECT_THAT(log_.notes, SizeIs(1));
  EXPECT_THAT(log_.withdrawn, IsEmpty());
  EXPECT_EQ(Write(Quota({"200"}, {})).outcome, Outcome::kChanged);
  EXPECT_THAT(Stored("peloraQuotaHard"), IsEmpty());
  EXPECT_EQ(Write(Quota({}, {"5"})).outcome, Outcome::kChanged);
  EXPECT_THAT(Stored("peloraQuotaHard"), ElementsAre("5"));
}

TEST_F(ChangeWriterTest, SendsNothingForWhatChangesNothing) {
  Store("peloraQuotaHard", {"100"});
  EXPECT_EQ(Write(Quota({"7"}, {"007"})).outcome, Outcome::kUnchanged);
  EXPECT_EQ(interrupted_.writes, 0U);
  EXPECT_THAT(log_.notes, IsEmpty());
}

TEST_F(ChangeWriterTest, AReadingThatIsNotAnsweredLeavesNothingInDoubt) {
  Store("peloraQuotaHard", {"150"});
  interrupted_.before_read = [] { return StoreStatus{ldap::kLdapTimeout, "no answer"}; };
  // Refused by the directory, and why cannot be found out: it was not done all the same.
  const Result result = Write(Quota({"100"}, {"200"}));
  EXPECT_EQ(result.outcome, Outcome::kFailed);
  EXPECT_EQ(result.message, "no answer");
  EXPECT_EQ(writer_.Rehearse(MakeChange(kUser, Quota({"100"}, {"200"}))).outcome, Outcome::kFailed);
}

TEST_F(ChangeWriterTest, AStaleValueIsNotOverwritten) {
  Store("peloraQuotaHard", {"150"});
  const Result result = Write(Quota({"100"}, {"200"}));
  EXPECT_EQ(result.outcome, Outcome::kRefused);
  EXPECT_EQ(result.message,
            "peloraQuotaHard was 100 when it was read, is 150 now, and was to become 200");
  EXPECT_EQ(result.code, std::nullopt);
  ASSERT_THAT(result.conflicts, SizeIs(1));
  EXPECT_THAT(result.conflicts[0].there, ElementsAre("150"));
  EXPECT_THAT(Stored("peloraQuotaHard"), ElementsAre("150"));
  EXPECT_THAT(log_.withdrawn, ElementsAre(0U));
}

TEST_F(ChangeWriterTest, WhatWasNotSetAndIsNowIsNotOverwritten) {
  Store("peloraQuotaHard", {"1"});
  EXPECT_EQ(Write(Quota({}, {"2"})).outcome, Outcome::kRefused);
  EXPECT_THAT(Stored("peloraQuotaHard"), ElementsAre("1"));
}

TEST_F(ChangeWriterTest, WhatWasClearedMeanwhileIsNotSetAgain) {
  Store("peloraQuotaHard", {});
  const Result result = Write(Quota({"1"}, {"2"}));
  EXPECT_EQ(result.message,
            "peloraQuotaHard was 1 when it was read, is not set now, and was to become 2");
  EXPECT_THAT(Stored("peloraQuotaHard"), IsEmpty());
}

TEST_F(ChangeWriterTest, NothingOfAnObjectIsWrittenWhenOneAttributeIsInConflict) {
  Store("peloraQuotaHard", {"150"});
  const AttributeValues before = Stored("description");
  Change change = MakeChange(kUser, Quota({"100"}, {"200"}));
  change.attributes.push_back(
      {.attribute = "description", .is_list = true, .seen = before, .wanted = {"new"}});
  EXPECT_EQ(writer_.Write(change).outcome, Outcome::kRefused);
  EXPECT_EQ(Stored("description"), before);
}

TEST_F(ChangeWriterTest, WhatSomebodyElseDidAlreadyIsNoConflict) {
  Store("peloraQuotaHard", {"200"});
  EXPECT_EQ(Write(Quota({"100"}, {"200"})).outcome, Outcome::kUnchanged);
  EXPECT_THAT(log_.withdrawn, ElementsAre(0U));
}

TEST_F(ChangeWriterTest, TheCaseOfALetterIsWhatWasSeenToo) {
  Store("peloraUserServer", {"MAIL1"});
  EXPECT_EQ(
      Write({.attribute = "peloraUserServer", .seen = {"mail1"}, .wanted = {"mail2"}}).outcome,
      Outcome::kRefused);
  EXPECT_EQ(
      Write({.attribute = "peloraUserServer", .seen = {"MAIL1"}, .wanted = {"Mail1"}}).outcome,
      Outcome::kChanged);
  EXPECT_THAT(Stored("peloraUserServer"), ElementsAre("Mail1"));
}

TEST_F(ChangeWriterTest, TwoWhoAddToAListBothKeepTheirs) {
  Store("otherMailbox", {"a@x", "b@x"});
  // Somebody else adds one and removes another after this list was seen.
  Store("otherMailbox", {"a@x", "theirs@x"});
  EXPECT_EQ(Write({"otherMailbox", true, {"a@x", "b@x"}, {"a@x", "b@x", "mine@x"}}).outcome,
            Outcome::kChanged);
  EXPECT_THAT(Stored("otherMailbox"), ElementsAre("a@x", "mine@x", "theirs@x"));
}

TEST_F(ChangeWriterTest, WhatIsLeftOfAListsChangeIsSentAgain) {
  Store("otherMailbox", {"a@x", "c@x", "theirs@x"});
  // "b@x" is gone and "c@x" is there already.
  EXPECT_EQ(Write({"otherMailbox", true, {"a@x", "b@x"}, {"c@x", "d@x"}}).outcome,
            Outcome::kChanged);
  EXPECT_THAT(Stored("otherMailbox"), ElementsAre("c@x", "d@x", "theirs@x"));
  // What is taken back is what was done, and not what had been done by others.
  ASSERT_THAT(log_.notes, SizeIs(2));
  EXPECT_THAT(log_.withdrawn, ElementsAre(0U));
  EXPECT_THAT(log_.notes[1].attributes[0].seen, ElementsAre("a@x"));
  EXPECT_THAT(log_.notes[1].attributes[0].wanted, ElementsAre("d@x"));
}

TEST_F(ChangeWriterTest, WhatComesBetweenTheRefusalAndTheNextLookCounts) {
  Store("peloraQuotaHard", {"150"});
  interrupted_.before_read = [this]() -> std::optional<StoreStatus> {
    Store("peloraQuotaHard", {"100"});
    return std::nullopt;
  };
  // Changed back meanwhile, it is as it was seen: it is written after all.
  EXPECT_EQ(Write(Quota({"100"}, {"200"})).outcome, Outcome::kChanged);
  EXPECT_THAT(Stored("peloraQuotaHard"), ElementsAre("200"));
  EXPECT_EQ(interrupted_.writes, 2U);
}

TEST_F(ChangeWriterTest, AnotherReasonIsAFailureWithTheDirectorysWords) {
  Store("peloraQuotaHard", {"100"});
  interrupted_.before_write = [](std::size_t) {
    return StoreStatus{ldap::kLdapConstraintViolation, "too much for this user"};
  };
  const Result result = Write(Quota({"100"}, {"200"}));
  EXPECT_EQ(result.outcome, Outcome::kFailed);
  EXPECT_EQ(result.message, "too much for this user");
  EXPECT_EQ(result.code, ldap::HresultOfLdap(ldap::kLdapConstraintViolation));
  EXPECT_THAT(Stored("peloraQuotaHard"), ElementsAre("100"));
  EXPECT_EQ(log_.notes.size(), log_.withdrawn.size());
}

TEST_F(ChangeWriterTest, AWriteThatIsNotAnsweredIsUnknownAndNotRepeated) {
  interrupted_.before_write = [](std::size_t) {
    return StoreStatus{ldap::kLdapTimeout, "no answer"};
  };
  const Result result = Write(Quota({}, {"200"}));
  EXPECT_EQ(result.outcome, Outcome::kUnknown);
  EXPECT_EQ(result.message, "no answer; looked at since, it was not done by then");
  EXPECT_EQ(interrupted_.writes, 1U);
  EXPECT_EQ(interrupted_.reads, 1U);
  // It may have been done, and then it may have to be taken back.
  EXPECT_THAT(log_.withdrawn, IsEmpty());
}

TEST_F(ChangeWriterTest, WhatIsNotAnsweredIsLookedUpByWhatWasToBeWritten) {
  Store("peloraQuotaHard", {"100"});
  std::string there;
  // What the directory holds when no answer comes, whoever wrote it.
  interrupted_.before_write = [&](std::size_t) {
    Store("peloraQuotaHard", {there});
    return StoreStatus{ldap::kLdapTimeout, "no answer"};
  };
  const auto told = [&](const std::string& value) {
    there = value;
    const Result result = Write(Quota({"100"}, {"200"}));
    EXPECT_EQ(result.outcome, Outcome::kUnknown);
    return result.message;
  };
  EXPECT_EQ(told("200"), "no answer; looked at since, everything is as wanted");
  EXPECT_EQ(told("100"), "no answer; looked at since, it was not done by then");
  EXPECT_EQ(told("300"), "no answer; looked at since, it is neither as it was nor as wanted");
  EXPECT_THAT(log_.withdrawn, IsEmpty());
}

TEST_F(ChangeWriterTest, WhereNobodyCanBeAskedThatIsSaidAndNotTriedAgain) {
  interrupted_.before_write = [](std::size_t) {
    return StoreStatus{ldap::kLdapTimeout, "no answer"};
  };
  interrupted_.before_read = [] { return StoreStatus{ldap::kLdapServerDown, "no connection"}; };
  EXPECT_EQ(Write(Quota({}, {"200"})).message,
            "no answer; looked at since, it cannot be read: no connection");
  EXPECT_EQ(Write(Quota({}, {"200"})).message, "no answer");
  EXPECT_EQ(interrupted_.reads, 1U);
}

TEST_F(ChangeWriterTest, AnObjectOfEachKindIsLookedUp) {
  const auto told = [this](const Change& change) { return LookUp(*store_, change).text; };
  const std::string nobody = std::string("CN=Nobody,") + kBase;
  Change made{.kind = Change::Kind::kAdd,
              .dn = kUser,
              .attributes = {{.attribute = "cn", .wanted = {"Heike Naumann"}}}};
  EXPECT_EQ(told(made), "everything is as wanted");
  made.attributes.push_back({.attribute = "unicodePwd", .wanted = {"secret"}});
  EXPECT_EQ(told(made), "everything is as wanted");
  made.attributes.front().wanted = {"Somebody"};
  EXPECT_EQ(told(made), "it is neither as it was nor as wanted");
  made.dn = nobody;
  EXPECT_EQ(told(made), "it was not done by then");
  for (const auto kind : {Change::Kind::kDelete, Change::Kind::kRemove}) {
    EXPECT_EQ(told({.kind = kind, .dn = nobody, .attributes = {}}), "everything is as wanted");
    EXPECT_EQ(told({.kind = kind, .dn = kUser, .attributes = {}}), "it was not done by then");
  }
  EXPECT_EQ(told({.kind = Change::Kind::kRestore, .dn = kUser, .attributes = {}}),
            "everything is as wanted");
  EXPECT_EQ(told({.kind = Change::Kind::kRestore, .dn = nobody, .attributes = {}}),
            "it was not done by then");
  const std::vector<ValueChange> seen = {{.attribute = "sAMAccountName", .seen = {"h.naumann"}}};
  const auto named = [&](const std::string& from, const std::string& to) {
    return told({.kind = Change::Kind::kRename, .dn = from, .attributes = seen, .new_dn = to});
  };
  EXPECT_EQ(named(nobody, kUser), "everything is as wanted");
  EXPECT_EQ(named(kUser, nobody), "it was not done by then");
  EXPECT_EQ(named(nobody, nobody + "," + kBase), "it is neither as it was nor as wanted");
  EXPECT_EQ(told(MakeChange(kUser, {.attribute = "unicodePwd", .wanted = {"secret"}})),
            "what was to be written cannot be read");
}

TEST_F(ChangeWriterTest, ADeletedObjectIsAFailure) {
  const Result result =
      writer_.Write(MakeChange(std::string("CN=Nobody,") + kBase, Quota({}, {"1"})));
  EXPECT_EQ(result.outcome, Outcome::kFailed);
  EXPECT_EQ(result.code, kNoSuchObject);
}

TEST_F(ChangeWriterTest, WhatCannotBeNotedIsNotSent) {
  log_.failure = {ldap::kLdapOther, "the disk is full"};
  const Result result = Write(Quota({}, {"1"}));
  EXPECT_EQ(result.outcome, Outcome::kFailed);
  EXPECT_EQ(result.message, "the disk is full");
  EXPECT_EQ(interrupted_.writes, 0U);
}

TEST_F(ChangeWriterTest, AnObjectIsMadeAndGoesAsLongAsItIsAsItWasMade) {
  const std::string dn = std::string("CN=New\\, Ada,") + kBase;
  const Change made{.kind = Change::Kind::kAdd,
                    .dn = dn,
                    .attributes = {{.attribute = "objectClass", .wanted = {"contact"}},
                                   {.attribute = "peloraAccount", .wanted = {"1"}},
                                   {.attribute = "otherMailbox", .wanted = {"a@x", "b@x"}}}};
  EXPECT_EQ(writer_.Write(made).outcome, Outcome::kChanged);
  EXPECT_EQ(writer_.Write(made).code, kObjectAlreadyExists);
  const Change undo = UndoOf(made);

  ASSERT_TRUE(Replace(*store_, dn, "description", {"mine now"}).Ok());
  Result result = writer_.Write(undo);
  EXPECT_EQ(result.outcome, Outcome::kRefused);
  EXPECT_THAT(result.message, HasSubstr("'description'"));
  ASSERT_TRUE(Replace(*store_, dn, "description", {}).Ok());
  ASSERT_TRUE(Replace(*store_, dn, "peloraAccount", {"0"}).Ok());
  result = writer_.Write(undo);
  EXPECT_EQ(result.outcome, Outcome::kRefused);
  EXPECT_THAT(result.message, HasSubstr("'peloraAccount'"));
  ASSERT_TRUE(Replace(*store_, dn, "peloraAccount", {"1"}).Ok());
  ASSERT_TRUE(Replace(*store_, dn, "otherMailbox", {"b@x", "a@x"}).Ok());

  const std::string below = "CN=Below," + dn;
  ASSERT_TRUE(store_->Add({.dn = below, .attributes = {{"objectClass", {"contact"}}}}).Ok());
  EXPECT_EQ(writer_.Write(undo).code, ldap::HresultOfLdap(ldap::kLdapNotAllowedOnNonLeaf));
  ASSERT_TRUE(store_->Delete({.dn = below, .attributes = {}}).Ok());

  EXPECT_EQ(writer_.Write(undo).outcome, Outcome::kChanged);
  Entry entry;
  EXPECT_EQ(store_->Read(dn, {}, entry).code, ldap::kLdapNoSuchObject);
  EXPECT_EQ(writer_.Write(undo).outcome, Outcome::kUnchanged);
}

}  // namespace
}  // namespace pelora::changes
