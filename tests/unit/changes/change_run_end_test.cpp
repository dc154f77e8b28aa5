// SPDX-License-Identifier: Apache-2.0
// How a run ends before its last object: told to stop, at the first that is not done, or when the
// directory, the notes or the preparation fail.
#include <gtest/gtest.h>

#include <stdexcept>

#include "hosts/ldap/ldap_status.h"
#include "tests/unit/changes/change_runner_bench.h"

namespace pelora::changes {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

class ChangeRunEndTest : public ChangeRunnerBench {};

TEST_F(ChangeRunEndTest, EndsAtTheFirstThatIsNotDone) {
  MakeContacts(5);
  prepare_ = [&](const ReadObject& object) {
    if (object.at == 2) {
      EXPECT_TRUE(Replace(*store_, names_[2], "peloraQuotaHard", {"5"}).Ok());
    }
    return SetQuota(object, "7");
  };
  Run({.stops_at_first = true, .log = &log_});
  EXPECT_THAT(words_, ElementsAre("changed", "changed", "refused", "skipped", "skipped"));
  EXPECT_THAT(Quotas(), ElementsAre("7", "7", "5", "1", "1"));
  EXPECT_EQ(prepared_, 3U);
  EXPECT_THAT(log_.notes, SizeIs(3));
  EXPECT_EQ(results_[4].dn, names_[4]);
}

TEST_F(ChangeRunEndTest, ToldToStopItFinishesWhatIsUnderWay) {
  MakeContacts(20);
  for (const std::size_t ahead : {1U, 4U}) {
    interrupted_.fetches_ahead = ahead;
    words_.clear();
    prepared_ = 0;
    log_ = {};
    std::stop_source stop;
    on_result_ = [&](std::size_t at) {
      if (at == 2) stop.request_stop();
    };
    const std::string quota = std::to_string(10 + ahead);
    prepare_ = [&](const ReadObject& object) { return SetQuota(object, quota); };
    const Tally tally = Run({.stop = stop.get_token(), .log = &log_});
    const std::size_t done = tally[Outcome::kChanged];
    EXPECT_EQ(done, 2 + ahead);
    EXPECT_EQ(tally[Outcome::kSkipped], 20 - done);
    // What was noted and not sent is not to be taken back.
    EXPECT_EQ(log_.notes.size() - log_.withdrawn.size(), done);
    const std::vector<std::string> quotas = Quotas();
    EXPECT_EQ(quotas[done - 1], quota);
    EXPECT_NE(quotas[done], quota);
  }
}

TEST_F(ChangeRunEndTest, AStopBeforeTheBeginningSkipsAll) {
  MakeContacts(3);
  std::stop_source stop;
  stop.request_stop();
  EXPECT_EQ(Run({.stop = stop.get_token()})[Outcome::kSkipped], 3U);
  EXPECT_EQ(prepared_, 0U);
}

TEST_F(ChangeRunEndTest, WhatWasSentWhenTheConnectionWasLostIsUnknown) {
  MakeContacts(8);
  interrupted_.fetches_ahead = 3;
  interrupted_.before_write = [](std::size_t count) -> std::optional<StoreStatus> {
    if (count == 1 || count == 2) return StoreStatus{ldap::kLdapTimeout, "not known"};
    if (count == 5) return StoreStatus{ldap::kLdapServerDown, "no connection"};
    return std::nullopt;
  };
  Run({.log = &log_});
  // The third of those fetched together goes over a new connection; then there is none.
  EXPECT_THAT(words_, ElementsAre("changed", "unknown", "unknown", "changed", "changed", "failed",
                                  "changed", "changed"));
  EXPECT_EQ(results_[1].message, "not known; looked at since, it was not done by then");
  EXPECT_THAT(log_.withdrawn, ElementsAre(5U));
}

TEST_F(ChangeRunEndTest, ALookThatIsLostLeavesNothingInDoubt) {
  MakeContacts(4);
  interrupted_.before_write = [](std::size_t count) -> std::optional<StoreStatus> {
    if (count == 1) return StoreStatus{ldap::kLdapTimeout, "not known"};
    return std::nullopt;
  };
  // What becomes of the refused one is to be looked up where the connection is gone.
  interrupted_.before_read = [this]() -> std::optional<StoreStatus> {
    if (interrupted_.writes == 0) return std::nullopt;
    return StoreStatus{ldap::kLdapTimeout, "no connection"};
  };
  prepare_ = [&](const ReadObject& object) {
    if (object.at == 2) {
      EXPECT_TRUE(Replace(*store_, names_[2], "peloraQuotaHard", {"5"}).Ok());
    }
    return SetQuota(object, "7");
  };
  Run({.log = &log_});
  EXPECT_THAT(words_, ElementsAre("changed", "unknown", "failed", "changed"));
  EXPECT_EQ(results_[2].message, "no connection");
  EXPECT_THAT(log_.withdrawn, ElementsAre(2U));
  EXPECT_THAT(Quotas(), ElementsAre("7", "1", "5", "7"));
}

TEST_F(ChangeRunEndTest, WithoutAConnectionTheRestIsSkipped) {
  MakeContacts(8);
  interrupted_.before_write = [](std::size_t count) -> std::optional<StoreStatus> {
    if (count == 1) return StoreStatus{ldap::kLdapServerDown, "no connection"};
    return std::nullopt;
  };
  const Tally tally = Run({.log = &log_});
  EXPECT_EQ(tally.Text(), "1 changed, 0 unchanged, 0 refused, 1 failed, 0 unknown, 6 skipped");
  EXPECT_EQ(interrupted_.writes, 2U);
  EXPECT_EQ(log_.withdrawn.size(), 7U);
}

TEST_F(ChangeRunEndTest, WhenTheTicketHasEndedTheRestIsSkipped) {
  MakeContacts(8);
  interrupted_.before_write = [](std::size_t count) -> std::optional<StoreStatus> {
    if (count == 1) return StoreStatus{ldap::kLdapInvalidCredentials, "the ticket has expired"};
    return std::nullopt;
  };
  const Tally tally = Run({.log = &log_});
  EXPECT_EQ(tally.Text(), "1 changed, 0 unchanged, 0 refused, 1 failed, 0 unknown, 6 skipped");
  EXPECT_EQ(results_[1].message, "the ticket has expired");
}

TEST_F(ChangeRunEndTest, WhatCannotBeNotedIsNotSentAndEndsTheRun) {
  MakeContacts(3);
  log_.failure = {ldap::kLdapOther, "the disk is full"};
  for (const bool in_turn : {false, true}) {
    words_.clear();
    results_.clear();
    prepared_ = 0;
    Run({.stops_at_first = in_turn, .log = &log_});
    EXPECT_EQ(words_[0], "failed");
    EXPECT_EQ(results_[0].message, "the disk is full");
    ASSERT_THAT(words_, SizeIs(3));
    EXPECT_EQ(interrupted_.writes, 0U);
  }
}

TEST_F(ChangeRunEndTest, WhatAPreparationThrowsEndsTheRunInOrder) {
  MakeContacts(4);
  prepare_ = [&](const ReadObject& object) {
    if (object.at == 2) throw std::runtime_error("out of memory");
    return SetQuota(object, "7");
  };
  EXPECT_THROW(Run({.log = &log_}), std::runtime_error);
  ASSERT_THAT(words_, SizeIs(4));
  EXPECT_EQ(words_[2], "skipped");
  const std::vector<std::string> quotas = Quotas();
  for (std::size_t at = 0; at < 4; ++at) {
    EXPECT_EQ(quotas[at] == "7", words_[at] == "changed") << at;
  }
}

TEST_F(ChangeRunEndTest, AReadingThatFailsAsAWholeIsEveryObjectsReason) {
  MakeContacts(3);
  interrupted_.before_read = [] { return StoreStatus{ldap::kLdapBusy, "locked"}; };
  const Tally tally = Run({});
  EXPECT_EQ(tally[Outcome::kFailed], 3U);
  EXPECT_EQ(results_[2].message, "locked");
}

}  // namespace
}  // namespace pelora::changes
