// SPDX-License-Identifier: Apache-2.0
// Guarded changes on a domain, while others write too.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

#include "hosts/changes/change_runner.h"
#include "hosts/changes/change_writer.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/network/network_store.h"
#include "tests/lab/lab_test.h"
#include "tests/lab/ldap_stand_in.h"
#include "tests/support/long_form.h"

namespace pelora::lab {
namespace {

using changes::Change;
using changes::ChangeWriter;
using changes::Outcome;
using changes::Result;
using changes::ValueChange;
using ldap::AttributeValues;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::SizeIs;
using Lines = std::vector<std::string>;

Change MakeChange(const std::string& dn, ValueChange value) {
  return {.dn = dn, .attributes = {std::move(value)}};
}

class GuardedChangesTest : public ::testing::Test {
 protected:
  GuardedChangesTest() {
    static int number = 0;
    container_ = "OU=Changes " + std::to_string(++number) + ",OU=Contract," + Base();
    administrator_.Add(container_, {{"objectClass", {"organizationalUnit"}}});
    administrator_.Add(dn_ = "CN=Jürgen Weiß\\, Dr.," + container_,
                       {{"objectClass", {"user"}},
                        {"peloraQuotaHard", {"100"}},
                        {"otherMailbox", {"a@x", "b@x"}}});
  }

  [[nodiscard]] ldap::IDirectoryStore& store() { return session_->store(); }
  Result Write(ValueChange value) {
    return ChangeWriter(store()).Write(MakeChange(dn_, std::move(value)));
  }
  [[nodiscard]] Lines Stored(const std::string& attribute) { return LdapSearch(dn_, {attribute}); }

  LabAdministrator administrator_;
  std::string container_;
  std::string dn_;
  std::unique_ptr<NetworkSession> session_ = OpenSession();
};

TEST_F(GuardedChangesTest, WhatIsAsItWasSeenIsWritten) {
  EXPECT_EQ(Write({"peloraQuotaHard", false, {"100"}, {"200"}}).outcome, Outcome::kChanged);
  EXPECT_EQ(Stored("peloraQuotaHard"), Lines{"peloraQuotaHard: 200"});
  EXPECT_EQ(Write({"peloraQuotaHard", false, {"200"}, {}}).outcome, Outcome::kChanged);
  EXPECT_EQ(Stored("peloraQuotaHard"), Lines{});
  EXPECT_EQ(Write({"peloraQuotaHard", false, {}, {"5"}}).outcome, Outcome::kChanged);
  EXPECT_EQ(Stored("peloraQuotaHard"), Lines{"peloraQuotaHard: 5"});
}

TEST_F(GuardedChangesTest, AnotherServerTellsWhatBecameOfWhatWasNotAnswered) {
  for (const bool is_done : {false, true}) {
    // Two ways to the one that there is.
    auto first = std::make_unique<TcpRelay>(ldap::kDirectoryPort);
    const TcpRelay second(ldap::kDirectoryPort);
    ldap::DomainServers domain;
    for (const std::uint16_t port : {first->port(), second.port()}) {
      domain.servers.push_back({.name = {.host = Server(), .port = port}});
    }
    const auto find = [domain](const std::stop_token& /*stop*/, ldap::DomainServers& found) {
      found = domain;
      return StoreStatus{};
    };
    ldap::NetworkStore store(std::make_shared<ldap::ServerChoice>(NetworkOptions{}, find),
                             std::make_shared<ldap::SchemaCache>());
    ASSERT_EQ(ToText(store.Open()), "0");
    is_done ? first->CutAtNextAnswer() : first->CutAtNextRequest();
    const Change change = MakeChange(dn_, {"peloraQuotaHard", false, {"100"}, {"200"}});
    ChangeWriter writer(store);
    StoreStatus answer = writer.Send(change);
    EXPECT_EQ(answer.code, ldap::kLdapTimeout);
    first.reset();
    const Result result = writer.Finish(change, 0, std::move(answer));
    EXPECT_EQ(result.outcome, Outcome::kUnknown);
    EXPECT_THAT(result.message,
                EndsWith(is_done ? "' was lost; looked at since, everything is as wanted"
                                 : "' was lost; looked at since, it was not done by then"));
    EXPECT_EQ(second.connections(), 1);
  }
  // It was sent once.
  EXPECT_EQ(Stored("peloraQuotaHard"), Lines{"peloraQuotaHard: 200"});
}

struct Race {
  const char* name;
  AttributeValues seen;
  AttributeValues there;
  AttributeValues wanted;
};

TEST_F(GuardedChangesTest, WhatSomebodyElseChangedIsNotOverwritten) {
  const std::vector<Race> races = {
      {"changed", {"100"}, {"150"}, {"200"}},
      {"changed and to be cleared", {"100"}, {"150"}, {}},
      {"cleared", {"100"}, {}, {"200"}},
      {"set", {}, {"150"}, {"200"}},
  };
  for (const Race& race : races) {
    administrator_.Set(dn_, "peloraQuotaHard", race.there);
    const Result result = Write({"peloraQuotaHard", false, race.seen, race.wanted});
    EXPECT_EQ(result.outcome, Outcome::kRefused) << race.name << ": " << result.message;
    ASSERT_THAT(result.conflicts, SizeIs(1)) << race.name;
    EXPECT_EQ(result.conflicts[0].there, race.there) << race.name;
    EXPECT_EQ(Stored("peloraQuotaHard").size(), race.there.size()) << race.name;
  }
  administrator_.Set(dn_, "peloraQuotaHard", {"200"});
  EXPECT_EQ(Write({"peloraQuotaHard", false, {"100"}, {"200"}}).outcome, Outcome::kUnchanged);
}

TEST_F(GuardedChangesTest, TheServerTakesATextInOtherLettersForTheOneThatWasSeen) {
  // What it does not see, no guard can: that somebody changed nothing but the case of a letter.
  administrator_.Set(dn_, "peloraUserServer", {"MAIL1"});
  EXPECT_EQ(Write({"peloraUserServer", false, {"mail1"}, {"mail2"}}).outcome, Outcome::kChanged);
  EXPECT_EQ(Write({"peloraUserServer", false, {"mail2"}, {"Mail2"}}).outcome, Outcome::kChanged);
  EXPECT_EQ(Stored("peloraUserServer"), Lines{"peloraUserServer: Mail2"});
}

TEST_F(GuardedChangesTest, TwoWhoAddToAListBothKeepTheirs) {
  administrator_.Set(dn_, "otherMailbox", {"a@x", "theirs@x"});
  EXPECT_EQ(Write({"otherMailbox", true, {"a@x", "b@x"}, {"a@x", "b@x", "Größe@x"}}).outcome,
            Outcome::kChanged);
  EXPECT_THAT(Stored("otherMailbox"), SizeIs(3));
  // "a@x" goes, and "b@x" has gone.
  const Result result = Write({"otherMailbox", true, {"a@x", "b@x"}, {"theirs@x", "d@x"}});
  EXPECT_EQ(result.outcome, Outcome::kChanged) << result.message;
  EXPECT_THAT(Stored("otherMailbox"), ElementsAre("otherMailbox: d@x", "otherMailbox: theirs@x",
                                                  HasSubstr("otherMailbox:: ")));
  EXPECT_EQ(Write({"otherMailbox", true, {"a@x"}, {"d@x"}}).outcome, Outcome::kUnchanged);
}

TEST_F(GuardedChangesTest, OtherReasonsAreFailures) {
  Result result = ChangeWriter(store()).Write(
      MakeChange("CN=Nobody," + container_, {"peloraQuotaHard", false, {}, {"1"}}));
  EXPECT_EQ(result.outcome, Outcome::kFailed);
  EXPECT_EQ(result.code, kNoSuchObject);
  const EnvironmentVariable tickets("KRB5CCNAME", TicketsOf(kHelper));
  const auto helper = OpenSession();
  result = ChangeWriter(helper->store())
               .Write(MakeChange(dn_, {"peloraQuotaHard", false, {"100"}, {"1"}}));
  EXPECT_EQ(result.outcome, Outcome::kFailed);
  EXPECT_EQ(result.code, E_ACCESSDENIED);
  EXPECT_NE(result.message, "");
  EXPECT_EQ(Stored("peloraQuotaHard"), Lines{"peloraQuotaHard: 100"});
}

TEST_F(GuardedChangesTest, WhatWasMadeGoesAsLongAsItIsAsItWasMade) {
  const std::string dn = "CN=Neu\\, Änne," + container_;
  const Change made{.kind = Change::Kind::kAdd,
                    .dn = dn,
                    .attributes = {{"objectClass", true, {}, {"user"}},
                                   {"sAMAccountName", false, {}, {"aenne"}},
                                   {"userAccountControl", false, {}, {"514"}},
                                   {"displayName", false, {}, {"Änne Neu"}},
                                   {"peloraAccount", false, {}, {"1"}}}};
  ChangeWriter writer(store());
  EXPECT_EQ(writer.Write(made).outcome, Outcome::kChanged);
  administrator_.Set(dn, "telephoneNumber", {"1"});
  Result result = writer.Write(UndoOf(made));
  EXPECT_EQ(result.outcome, Outcome::kRefused) << result.message;
  EXPECT_THAT(LdapSearch(dn, {"telephoneNumber"}), SizeIs(1));
  administrator_.Remove(dn);
  EXPECT_EQ(writer.Write(UndoOf(made)).outcome, Outcome::kUnchanged);
  EXPECT_EQ(writer.Write(made).outcome, Outcome::kChanged);
  result = writer.Write(UndoOf(made));
  EXPECT_EQ(result.outcome, Outcome::kChanged) << result.message;
  Entry entry;
  EXPECT_EQ(store().Read(dn, {}, entry).code, ldap::kLdapNoSuchObject);
}

/// What one writer did.
struct Deeds {
  int accepted = 0;
  int refused = 0;
  std::string trouble;
};

/// Reads the counter and counts on from what it read, again and again.
Deeds CountOn(ldap::IDirectoryStore& store, const std::string& dn, int rounds) {
  ChangeWriter writer(store);
  Deeds deeds;
  for (int round = 0; round < rounds; ++round) {
    const std::string seen = ReadValue(store, dn, "peloraQuotaHard");
    const Result result = writer.Write(
        MakeChange(dn, {"peloraQuotaHard", false, {seen}, {std::to_string(std::stoi(seen) + 1)}}));
    if (result.outcome == Outcome::kChanged) {
      ++deeds.accepted;
    } else if (result.outcome == Outcome::kRefused || result.outcome == Outcome::kUnchanged) {
      ++deeds.refused;
    } else {
      deeds.trouble = result.message;
    }
  }
  return deeds;
}

TEST_F(GuardedChangesTest, NoAcceptedChangeIsLost) {
  administrator_.Set(dn_, "peloraQuotaHard", {"1000"});
  const auto rounds = static_cast<int>(pelora::testing::RoundsOr(60));
  Deeds theirs;
  {
    const auto other = OpenSession();
    std::jthread writer([&] { theirs = CountOn(other->store(), dn_, rounds); });
    const Deeds mine = CountOn(store(), dn_, rounds);
    writer.join();
    EXPECT_EQ(mine.trouble + theirs.trouble, "");
    EXPECT_EQ(Stored("peloraQuotaHard"),
              Lines{"peloraQuotaHard: " + std::to_string(1000 + mine.accepted + theirs.accepted)});
    EXPECT_EQ(mine.accepted + mine.refused, rounds);
    // They did meet.
    EXPECT_GT(mine.refused + theirs.refused, 0);
    std::cout << "two writers, " << rounds << " rounds each: " << mine.accepted + theirs.accepted
              << " accepted, " << mine.refused + theirs.refused << " refused" << std::endl;
  }
}

/// A number that costs the server nothing else to change.
const std::string kCounter = "peloraAccount";

/// People of one unit, each with a number.
class ManyChangesTest : public GuardedChangesTest {
 protected:
  void MakePeople(int count) {
    for (int number = 0; number < count; ++number) {
      names_.push_back("CN=Person " + std::to_string(number) + "," + container_);
      administrator_.Add(names_.back(), {{"objectClass", {"contact"}}, {kCounter, {"1"}}});
    }
  }
  changes::Tally SetNumber(ldap::IDirectoryStore& store, const std::string& wanted,
                           const std::function<void(std::size_t at)>& before = nullptr) {
    results_.clear();
    return changes::RunChanges(
        store, names_,
        [&](const changes::ReadObject& object) -> changes::Prepared {
          if (!object.status.Ok()) return {.instead = changes::NotDone("?", object.status)};
          if (before) before(object.at);
          return {.change = MakeChange(
                      names_[object.at],
                      {kCounter, false, object.entry.attributes.at(kCounter), {wanted}})};
        },
        {.attributes = {kCounter}},
        [&](std::size_t at, const Result& result) {
          EXPECT_EQ(at, results_.size());
          results_.push_back(result);
        });
  }
  [[nodiscard]] Lines Numbers() {
    Lines numbers;
    for (const std::string& name : names_) {
      numbers.push_back(ReadValue(store(), name, kCounter));
    }
    return numbers;
  }

  Lines names_;
  std::vector<Result> results_;
};

TEST_F(ManyChangesTest, AllOfThemAreWrittenButForThoseInConflict) {
  MakePeople(150);
  const auto tally = SetNumber(store(), "7", [&](std::size_t at) {
    if (at == 90) administrator_.Set(names_[at], kCounter, {"50"});
  });
  EXPECT_EQ(tally.Text(), "149 changed, 0 unchanged, 1 refused, 0 failed, 0 unknown, 0 skipped");
  EXPECT_EQ(results_[90].outcome, Outcome::kRefused);
  Lines numbers = Numbers();
  EXPECT_EQ(numbers[90], "50");
  numbers.erase(numbers.begin() + 90);
  EXPECT_THAT(numbers, Each("7"));
}

TEST_F(ManyChangesTest, WhatWasUnderWayWhenTheConnectionWasLostIsUnknownAndNothingIsSentTwice) {
  MakePeople(150);
  RelayedSession relayed;
  const auto tally = SetNumber(relayed.store(), "7", [&](std::size_t at) {
    if (at == 128) relayed.relay.CutAtNextAnswer();
  });
  EXPECT_GT(tally[Outcome::kUnknown], 0U);
  EXPECT_LT(tally[Outcome::kUnknown], 100U);
  EXPECT_EQ(tally[Outcome::kUnknown] + tally[Outcome::kChanged], 150U) << tally.Text();
  const Lines numbers = Numbers();
  for (std::size_t at = 0; at < results_.size(); ++at) {
    const bool is_done = numbers[at] == "7";
    EXPECT_TRUE(is_done || results_[at].outcome == Outcome::kUnknown) << at;
  }
  // Looked at again, each is one or the other.
  EXPECT_TRUE(SetNumber(relayed.store(), "7").IsAllDone());
  EXPECT_THAT(Numbers(), Each("7"));
}

TEST_F(ManyChangesTest, WithoutAServerTheRestIsSkipped) {
  MakePeople(150);
  RunningServer server;
  RelayedSession relayed;
  const auto tally = SetNumber(relayed.store(), "7", [&](std::size_t at) {
    if (at == 140) server.Kill();
  });
  EXPECT_FALSE(tally.IsAllDone());
  EXPECT_EQ(tally[Outcome::kRefused] + tally[Outcome::kUnchanged], 0U);
  server.Start();
  administrator_.Reconnect();
  EXPECT_TRUE(SetNumber(relayed.store(), "7").IsAllDone());
  EXPECT_THAT(Numbers(), Each("7"));
}

TEST(ManyModifications, AreUnderWayTogether) {
  LdapStandIn server({.gathers = true},
                     [](const StandInRequest& /*request*/) { return StandInAnswer{}; });
  const auto session = OpenSession({.server = server.Address()});
  server.Forget();
  std::size_t sent = 0;
  std::vector<int> codes;
  session->store().ModifyManyStrictly(
      [&]() -> std::optional<ldap::ModifyRequest> {
        if (sent == 640) return std::nullopt;
        return ldap::ModifyRequest{"CN=" + std::to_string(sent++) + ",DC=x",
                                   {{ldap::Modification::Operation::kAdd, "mail", {"m@x"}}}};
      },
      [&](const StoreStatus& status) { codes.push_back(status.code); });
  EXPECT_THAT(codes, SizeIs(640));
  EXPECT_THAT(codes, Each(0));
  EXPECT_EQ(server.requests(), 640);
  EXPECT_LE(server.turns(), 20);
}

TEST(ManyModifications, OfAServerThatHangsUpEachIsToldOnce) {
  int count = 0;
  LdapStandIn server({}, [&](const StandInRequest& /*request*/) -> StandInAnswer {
    return {.hangs_up = ++count == 10};
  });
  const auto session = OpenSession({.server = server.Address()});
  std::size_t sent = 0;
  std::vector<int> codes;
  session->store().ModifyManyStrictly(
      [&]() -> std::optional<ldap::ModifyRequest> {
        if (sent == 200) return std::nullopt;
        return ldap::ModifyRequest{"CN=" + std::to_string(sent++) + ",DC=x",
                                   {{ldap::Modification::Operation::kAdd, "mail", {"m@x"}}}};
      },
      [&](const StoreStatus& status) { codes.push_back(status.code); });
  ASSERT_THAT(codes, SizeIs(200));
  EXPECT_GT(std::ranges::count(codes, ldap::kLdapTimeout), 0);
  EXPECT_EQ(std::ranges::count(codes, ldap::kLdapTimeout) + std::ranges::count(codes, 0), 200);
  EXPECT_EQ(server.connections(), 2);
}

}  // namespace
}  // namespace pelora::lab
