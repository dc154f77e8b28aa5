// SPDX-License-Identifier: Apache-2.0
#include "hosts/changes/change_runner.h"

#include "hosts/ldap/reads_ahead.h"
#include "tests/unit/changes/change_runner_bench.h"

namespace pelora::changes {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class ChangeRunnerTest : public ChangeRunnerBench {};

TEST_F(ChangeRunnerTest, TellsEveryResultInTheObjectsOrder) {
  MakeContacts(6);
  ASSERT_TRUE(Replace(*store_, names_[1], "peloraQuotaHard", {"7"}).Ok());
  names_.insert(names_.begin() + 2, "CN=Nobody," + std::string(kBase));
  names_.insert(names_.begin() + 3, "");
  std::string theirs;
  prepare_ = [&](const ReadObject& object) -> Prepared {
    if (object.at == 3) {
      EXPECT_TRUE(object.status.Ok());
      return {.instead = Result{.dn = "ada", .outcome = Outcome::kRefused, .message = "several"}};
    }
    if (object.at == 4) {
      EXPECT_EQ(object.entry.dn, names_[4]);
      EXPECT_TRUE(Replace(*store_, names_[4], "peloraQuotaHard", {theirs}).Ok());
    }
    return SetQuota(object, "7");
  };
  for (const std::size_t ahead : {1U, 64U}) {
    interrupted_.fetches_ahead = ahead;
    theirs = std::to_string(100 + ahead);
    words_.clear();
    results_.clear();
    ASSERT_TRUE(Replace(*store_, names_[0], "peloraQuotaHard", {"1"}).Ok());
    const Tally tally = Run({.log = &log_});
    EXPECT_EQ(words_[0], "changed");
    EXPECT_EQ(words_[1], "unchanged");
    EXPECT_EQ(words_[2], "failed");
    EXPECT_EQ(words_[3], "refused");
    EXPECT_EQ(results_[3].dn, "ada");
    EXPECT_EQ(results_[3].message, "several");
    EXPECT_EQ(words_[4], "refused");
    EXPECT_EQ(results_[4].dn, names_[4]);
    EXPECT_THAT(results_[4].conflicts, SizeIs(1));
    ASSERT_THAT(words_, SizeIs(8));
    EXPECT_FALSE(tally.IsAllDone());
    EXPECT_EQ(tally[Outcome::kRefused], 2U);
  }
}

TEST_F(ChangeRunnerTest, WritesManyInTheFilesOwnWay) {
  // One object again and again: each change takes for granted that the one before it was made.
  MakeContacts(1);
  std::vector<Change> changes;
  for (int number = 1; number < 600; ++number) {
    changes.push_back(MakeChange(
        names_[0],
        {"peloraQuotaHard", false, {std::to_string(number)}, {std::to_string(number + 1)}}));
  }
  changes[300].attributes[0].seen = {"7"};
  changes[301].attributes[0].seen = {"301"};
  const Tally tally =
      RunChanges(*store_, changes, {.log = &log_},
                 [this](std::size_t at, const Result& result) { Note(at, result); });
  EXPECT_EQ(tally.Text(), "598 changed, 0 unchanged, 1 refused, 0 failed, 0 unknown, 0 skipped");
  EXPECT_EQ(words_[300], "refused");
  EXPECT_THAT(Quotas(), ElementsAre("600"));
  EXPECT_THAT(log_.withdrawn, ElementsAre(300U));
}

/// A store that reads ahead, and notes how many objects it was told of, and asked for, at a time.
class StoreAhead final : public InterruptedStore, public ldap::IReadsAhead {
 public:
  using InterruptedStore::InterruptedStore;

  std::vector<std::size_t> asked;
  std::vector<std::string> announced;

  void Expect(std::span<const std::string> dns,
              std::span<const std::string> /*attributes*/) override {
    announced.assign(dns.begin(), dns.end());
  }
  StoreStatus ReadMany(std::span<const std::string> dns, std::span<const std::string> attributes,
                       const ldap::ReadSink& sink) override {
    EXPECT_TRUE(asked.empty() || std::ranges::equal(dns, announced));
    asked.push_back(dns.size());
    return InterruptedStore::ReadMany(dns, attributes, sink);
  }
};

TEST_F(ChangeRunnerTest, AnnouncesWhatIsReadNextAndReadsMoreAndMoreTogether) {
  for (int number = 0; number < 1000; ++number) {
    names_.push_back("CN=Nobody " + std::to_string(number) + "," + kBase);
  }
  const auto batches = [this](const RunOptions& options) {
    StoreAhead store(*store_);
    std::size_t asked = 0;
    RunOptions all = options;
    all.at_hand = [&asked](std::size_t at) -> const ldap::Entry* {
      EXPECT_EQ(at, asked++);
      return nullptr;
    };
    RunChanges(store, names_, prepare_, all, [](std::size_t /*at*/, const Result& result) {
      EXPECT_EQ(result.outcome, Outcome::kFailed);
    });
    EXPECT_EQ(asked, names_.size());
    return store.asked;
  };
  EXPECT_THAT(batches({}), ElementsAre(256, 512, 232));
  // Results that are told one by one are not to be waited for.
  EXPECT_THAT(batches({.is_rehearsal = true}), ElementsAre(256, 256, 256, 232));
}

TEST_F(ChangeRunnerTest, WhatIsAtHandIsNotReadAgain) {
  MakeContacts(4);
  names_.insert(names_.begin() + 1, "");
  ldap::Entry at_hand;
  ASSERT_TRUE(store_->Read(names_[2], {}, at_hand).Ok());
  ldap::Entry outdated{.dn = names_[3], .attributes = {{"peloraQuotaHard", {"4"}}}};
  prepare_ = [](const ReadObject& object) -> Prepared {
    EXPECT_TRUE(object.status.Ok());
    if (object.entry.dn.empty()) {
      return {.instead = Result{.dn = "ada", .outcome = Outcome::kRefused, .message = "several"}};
    }
    return SetQuota(object, "7");
  };
  RunOptions options;
  std::vector<std::size_t> asked;
  options.at_hand = [&](std::size_t at) -> const ldap::Entry* {
    asked.push_back(at);
    return at == 2 ? &at_hand : at == 3 ? &outdated : nullptr;
  };
  Run(options);
  // Somebody else's value is found when it is to be written, and is not overwritten.
  EXPECT_THAT(words_, ElementsAre("changed", "refused", "changed", "refused", "changed"));
  EXPECT_EQ(results_[3].message,
            "peloraQuotaHard was 4 when it was read, is 1 now, and was to become 7");
  // The two that are not at hand, and the one that is in dispute.
  EXPECT_EQ(interrupted_.reads, 3U);
  EXPECT_THAT(asked, ElementsAre(0, 1, 2, 3, 4));
}

TEST_F(ChangeRunnerTest, HoldsNoMoreThanAWindowOfManyObjects) {
  for (int number = 0; number < 1000; ++number) {
    names_.push_back("CN=Nobody " + std::to_string(number) + "," + kBase);
  }
  prepare_ = [&](const ReadObject& object) -> Prepared {
    return {.change = MakeChange(names_[object.at], {"peloraQuotaHard", false, {"1"}, {"2"}})};
  };
  interrupted_.before_write = [](std::size_t) { return StoreStatus{}; };
  interrupted_.fetches_ahead = 64;
  EXPECT_EQ(Run({})[Outcome::kChanged], 1000U);
  EXPECT_EQ(prepared_, 1000U);
  EXPECT_GE(most_held_, 64U);
  EXPECT_LE(most_held_, 512U);
}

TEST_F(ChangeRunnerTest, ARehearsalNotesAndSendsNothing) {
  MakeContacts(4);
  ASSERT_TRUE(Replace(*store_, names_[1], "peloraQuotaHard", {"7"}).Ok());
  Run({.is_rehearsal = true, .log = &log_});
  EXPECT_THAT(words_, ElementsAre("changed", "unchanged", "changed", "changed"));
  EXPECT_EQ(interrupted_.writes, 0U);
  EXPECT_THAT(Quotas(), ElementsAre("1", "7", "1", "1"));
  ASSERT_THAT(log_.notes, SizeIs(3));
  EXPECT_EQ(log_.notes[1].dn, names_[2]);
  EXPECT_THAT(log_.withdrawn, IsEmpty());
}

TEST_F(ChangeRunnerTest, AdditionsAndDeletionsKeepTheirPlace) {
  const std::string dn = "CN=Made," + std::string(kBase);
  const Change made{.kind = Change::Kind::kAdd,
                    .dn = dn,
                    .attributes = {{.attribute = "objectClass", .wanted = {"contact"}},
                                   {.attribute = "peloraQuotaHard", .wanted = {"1"}}}};
  Change set = MakeChange(dn, {.attribute = "peloraQuotaHard", .seen = {"1"}, .wanted = {"2"}});
  const std::vector<Change> changes = {set, made, set, UndoOf(set), UndoOf(made), UndoOf(made)};
  for (const std::size_t ahead : {1U, 64U}) {
    interrupted_.fetches_ahead = ahead;
    words_.clear();
    RunChanges(interrupted_, changes, {},
               [this](std::size_t at, const Result& result) { Note(at, result); });
    EXPECT_THAT(words_,
                ElementsAre("failed", "changed", "changed", "changed", "changed", "unchanged"));
  }
}

}  // namespace
}  // namespace pelora::changes
