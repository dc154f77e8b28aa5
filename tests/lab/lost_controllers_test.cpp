// SPDX-License-Identifier: Apache-2.0
// Controllers that are killed in the middle of something.
#include <atomic>
#include <future>
#include <thread>

#include "hosts/changes/change_writer.h"
#include "hosts/ldap/ldap_status.h"
#include "tests/lab/peloractl_bulk.h"
#include "tests/lab/several_controllers.h"

namespace pelora::lab {
namespace {

using changes::Change;
using changes::ChangeWriter;
using changes::Outcome;
using changes::Result;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::StartsWith;

/// Waits for something that comes, however long that takes.
template <class Condition>
void Await(const Condition& is_so) {
  while (!is_so()) std::this_thread::sleep_for(std::chrono::milliseconds(5));
}

class LostControllers : public SeveralControllers {
 protected:
  [[nodiscard]] static std::string Through(const TcpRelay& relay) {
    return HostOf(kNear) + ":" + std::to_string(relay.port());
  }
  [[nodiscard]] static std::string Numbered(int number) {
    return "CN=Person " + std::to_string(number) + ",OU=Many," + Base();
  }

  /// Does something on the near one, through a relay, again and again; it is killed at an ever
  /// later step, until it has all been done before. How often it was killed. `check` looks at what
  /// became of it when it is there again.
  static int KillAtEveryStep(
      const std::function<void(ldap::NetworkStore& store)>& act,
      const std::function<void()>& check = [] {}) {
    int killed = 0;
    for (std::size_t bytes = 0, step = 300;; bytes += step, step *= 2) {
      SCOPED_TRACE(bytes);
      RunningServer near(kNear);
      TcpRelay relay(ldap::kDirectoryPort, kNearAddress);
      ToldStore told({Through(relay), HostOf(kFirstController)});
      EXPECT_EQ(ToText(told.store.Open()), "0");
      relay.HoldAnswersAfter(bytes);
      std::atomic<bool> is_done = false;
      std::thread killer([&] {
        Await([&] { return relay.HasHeld() || is_done; });
        if (relay.HasHeld()) near.Kill();
      });
      act(told.store);
      is_done = true;
      killer.join();
      const bool is_killed = relay.HasHeld();
      if (is_killed) {
        ++killed;
        // What was lost in the end is noticed by what comes next.
        EXPECT_EQ(ReadValue(told.store, Numbered(0), "cn"), "Person 0");
        EXPECT_EQ(told.server(), HostOf(kFirstController));
        near.Start();
      }
      check();
      if (!is_killed || ::testing::Test::HasFailure()) return killed;
    }
  }
};

TEST_F(LostControllers, AtAnyStepOfOpeningTheOtherTakesOver) {
  int killed = 0;
  std::size_t bytes = 0;
  for (std::size_t step = 1;; bytes += step, step += step / 2 + 400) {
    SCOPED_TRACE(bytes);
    RunningServer near(kNear);
    TcpRelay relay(ldap::kDirectoryPort, kNearAddress);
    relay.HoldAnswersAfter(bytes);
    ToldStore told({Through(relay), HostOf(kFirstController)});
    std::atomic<bool> is_open = false;
    std::thread killer([&] {
      Await([&] { return relay.HasHeld() || is_open; });
      if (relay.HasHeld()) near.Kill();
    });
    const StoreStatus status = told.store.Open();
    is_open = true;
    killer.join();
    ASSERT_EQ(ToText(status), "0");
    if (!relay.HasHeld()) break;
    ++killed;
    EXPECT_EQ(told.server(), HostOf(kFirstController));
    EXPECT_EQ(ReadValue(told.store, user_, "description"), "before");
  }
  EXPECT_GE(killed, 5);
}

TEST_F(LostControllers, AtAnyStepOfReadingManyTheOtherGoesOn) {
  std::vector<std::string> names;
  for (int number = 0; number < 300; ++number) names.push_back(Numbered(number));
  const int killed = KillAtEveryStep([&](ldap::NetworkStore& store) {
    std::vector<std::string> read;
    EXPECT_EQ(ToText(store.ReadMany(names, {},
                                    [&](const StoreStatus& status, const Entry& entry) {
                                      EXPECT_EQ(ToText(status), "0");
                                      read.push_back(entry.dn);
                                      return true;
                                    })),
              "0");
    EXPECT_EQ(read, names);
  });
  EXPECT_GE(killed, 5);
}

TEST_F(LostControllers, AtAnyStepOfFindingAllIsFoundOrItIsTold) {
  int told = 0;
  const int killed = KillAtEveryStep([&](ldap::NetworkStore& store) {
    std::size_t found = 0;
    const auto find = [&] {
      found = 0;
      return store.Search({.base = "OU=Many," + Base(),
                           .scope = ldap::SearchScope::kSubtree,
                           .filter = "(objectClass=user)",
                           .attributes = {"cn"}},
                          [&found](const Entry& /*entry*/) { return ++found > 0; });
    };
    StoreStatus status = find();
    if (!status.Ok()) {
      ++told;
      EXPECT_THAT(ToText(status), AllOf(StartsWith("-1 "), HasSubstr("was lost")));
      status = find();
    }
    EXPECT_EQ(ToText(status), "0");
    EXPECT_EQ(found, 1100U);
  });
  EXPECT_GE(killed, 5);
  // Some came before anything had been found: those went on unseen.
  EXPECT_GT(told, 0);
  EXPECT_LT(told, killed);
}

TEST_F(LostControllers, AtAnyStepOfApplyingWhatIsToldAsDoneIsDone) {
  constexpr int kFirst = 500;
  constexpr int kCount = 200;
  int round = 0;
  std::vector<int> codes;
  const auto apply = [&](ldap::NetworkStore& store) {
    codes.clear();
    int next = 0;
    const std::string value = "round " + std::to_string(++round);
    store.ModifyManyStrictly(
        [&]() -> std::optional<ldap::ModifyRequest> {
          if (next == kCount) return std::nullopt;
          return ldap::ModifyRequest{
              .dn = Numbered(kFirst + next++),
              .modifications = {{ldap::Modification::Operation::kReplace, "description", {value}}}};
        },
        [&](const StoreStatus& status) { codes.push_back(status.code); });
  };
  const auto check = [&] {
    Replicate(kFirstController, kNear);
    Replicate(kNear, kFirstController);
    ASSERT_EQ(codes.size(), static_cast<std::size_t>(kCount));
    LabAdministrator administrator;
    int unknown = 0;
    for (int number = 0; number < kCount; ++number) {
      const int code = codes[static_cast<std::size_t>(number)];
      if (code == ldap::kLdapTimeout) {
        ++unknown;
        continue;
      }
      EXPECT_EQ(code, 0) << number;
      EXPECT_EQ(administrator.Stored(Numbered(kFirst + number))["description"],
                std::vector<std::string>{"round " + std::to_string(round)})
          << number;
    }
    EXPECT_LE(unknown, 64);
  };
  EXPECT_GE(KillAtEveryStep(apply, check), 4);
}

TEST_F(LostControllers, InTheMiddleOfAReadingTheOtherGoesOn) {
  ToldStore told({HostOf(kNear), HostOf(kFirstController)});
  ASSERT_EQ(ToText(told.store.Open()), "0");
  RunningServer near(kNear);
  std::vector<std::string> names;
  for (int number = 0; number < 900; ++number) {
    names.push_back("CN=Person " + std::to_string(number) + ",OU=Many," + Base());
  }
  std::size_t count = 0;
  EXPECT_EQ(ToText(told.store.ReadMany(names, {},
                                       [&](const StoreStatus& read, const Entry& entry) {
                                         EXPECT_EQ(entry.dn, read.Ok() ? names[count] : "");
                                         if (++count == 50) near.Kill();
                                         return true;
                                       })),
            "0");
  EXPECT_EQ(count, names.size());
  EXPECT_EQ(told.server(), HostOf(kFirstController));
}

TEST_F(LostControllers, InTheMiddleOfFindingItIsToldAndTheNextSearchFindsEverything) {
  RunningServer near(kNear);
  TcpRelay relay(ldap::kDirectoryPort, kNearAddress);
  ToldStore told({Through(relay), HostOf(kFirstController)});
  ASSERT_EQ(ToText(told.store.Open()), "0");
  ASSERT_EQ(ReadValue(told.store, Numbered(0), "cn"), "Person 0");
  // Of a megabyte that it says at once; what is on its way arrives whoever is killed.
  relay.HoldAnswersAfter(300'000);
  int found = 0;
  const auto find = [&](int kill_at) {
    found = 0;
    return told.store.Search({.base = "OU=Many," + Base(),
                              .scope = ldap::SearchScope::kSubtree,
                              .filter = "(objectClass=user)",
                              .attributes = {}},
                             [&](const Entry&) {
                               if (++found == kill_at) near.Kill();
                               return true;
                             });
  };
  EXPECT_THAT(ToText(find(100)), AllOf(StartsWith("-1 "), HasSubstr("was lost")));
  EXPECT_LT(found, 1100);
  EXPECT_EQ(ToText(find(-1)), "0");
  EXPECT_EQ(found, 1100);
  EXPECT_EQ(told.server(), HostOf(kFirstController));
}

/// What a guarded change comes to whose server has done it and dies before it has answered;
/// `meanwhile` happens before it dies.
Result WriteLost(const std::string& user, const std::function<void()>& meanwhile) {
  RunningServer near(kNear);
  TcpRelay relay(ldap::kDirectoryPort, kNearAddress);
  ToldStore told({HostOf(kNear) + ":" + std::to_string(relay.port()), HostOf(kFirstController)});
  EXPECT_EQ(ToText(told.store.Open()), "0");
  LabAdministrator administrator(HostOf(kNear));
  relay.HoldAnswersAfter(0);
  auto result = std::async(std::launch::async, [&] {
    ChangeWriter writer(told.store);
    return writer.Write(
        {.kind = Change::Kind::kModify,
         .dn = user,
         .attributes = {{.attribute = "description", .seen = {"before"}, .wanted = {"written"}}}});
  });
  Await([&] {
    return administrator.Stored(user)["description"] == std::vector<std::string>{"written"};
  });
  meanwhile();
  near.Kill();
  Result got = result.get();
  EXPECT_EQ(told.server(), HostOf(kFirstController));
  return got;
}

TEST_F(LostControllers, AWriteThatIsNotAnsweredIsUnknownAndLookedUpOnTheOther) {
  Result result = WriteLost(user_, [] {});
  EXPECT_EQ(result.outcome, Outcome::kUnknown);
  EXPECT_THAT(result.message, HasSubstr("; looked at since, it was not done by then"));
  // The other one could not know; it is told as soon as the first is back.
  Replicate(kFirstController, kNear);
  EXPECT_EQ(DescriptionOn(kFirstController), "written");
}

TEST_F(LostControllers, AWriteThatTheOtherKnowsOfIsFoundWritten) {
  const Result result = WriteLost(user_, [] { Replicate(kFirstController, kNear); });
  EXPECT_EQ(result.outcome, Outcome::kUnknown);
  EXPECT_THAT(result.message, HasSubstr("; looked at since, everything is as wanted"));
}

class LostInBulk : public BulkPeloractl {};

TEST_F(LostInBulk, InTheMiddleOfAThousandChangesTheOtherGoesOn) {
  Replicate(kNear, kFirstController);
  const std::string table = Table();
  RunningServer near(kNear);
  // No server is named: the nearest.
  const ProgramRun run = Apply(table, "", [&] { near.Kill(); });
  std::map<std::string, int> counts;
  std::vector<std::string> changed;
  std::istringstream report(Contents(folder_.File("report")));
  for (std::string line; std::getline(report, line);) {
    const auto result = nlohmann::json::parse(line);
    const std::string word = result.at("result");
    ++counts[word];
    if (word == "changed") changed.push_back(result.at("dn"));
    if (word == "unknown") {
      EXPECT_THAT(std::string(result.at("message")), HasSubstr("; looked at since, "));
    }
  }
  // What had been sent when it died may have been done or not.
  EXPECT_LE(counts["unknown"], 64);
  EXPECT_EQ(counts["unknown"] + counts["changed"], kObjects) << ::testing::PrintToString(counts);
  EXPECT_EQ(run.code, counts["unknown"] > 0 ? 1 : 0) << run.errors;

  near.Start();
  LabAdministrator at_near(HostOf(kNear));
  const auto is_hidden = [](LabAdministrator& administrator, const std::string& dn) {
    return administrator.Stored(dn)["peloraHidden"] == std::vector<std::string>{"1"};
  };
  EXPECT_TRUE(is_hidden(at_near, NameOf(0)));
  EXPECT_FALSE(is_hidden(at_near, NameOf(kObjects - 1))) << "it was the other one's to do";
  Replicate(kFirstController, kNear);
  for (const std::string& dn : changed) EXPECT_TRUE(is_hidden(administrator_, dn)) << dn;
  const ProgramRun retried = Ctl("apply '" + table + "' --retry '" + folder_.File("report") + "'");
  EXPECT_EQ(retried.code, 0) << retried.errors;
  Replicate(kNear, kFirstController);
  for (int number = 0; number < kObjects; ++number) {
    EXPECT_TRUE(is_hidden(at_near, NameOf(number))) << number;
  }
}

}  // namespace
}  // namespace pelora::lab
