// SPDX-License-Identifier: Apache-2.0
#include "features/feature_state.h"

#include <gtest/gtest.h>

#include "features/feature_table.h"
#include "tests/unit/features/features_bench.h"

namespace pelora {
namespace {

using testing::FaultDirectory;
using testing::FaultPoint;
using testing::kAda;
using testing::kBob;
using testing::kCyd;
using testing::kDisabledList;
using testing::kEnabledList;
using testing::Lists;
using testing::UserWith;
using Lines = std::vector<std::string>;

class FeatureStateTest : public ::testing::Test {
 protected:
  /// Adds the users and binds them.
  BoundObjects Bind(const std::vector<Lists>& users) {
    const std::vector<std::string> paths = {kAda, kBob, kCyd};
    const std::span<const std::string> used(paths.data(), users.size());
    for (std::size_t user = 0; user < users.size(); ++user) {
      directory_.AddObject(paths.at(user), UserWith(users.at(user)));
    }
    BoundObjects objects;
    EXPECT_EQ(faulty_.BindPaths(used, IID_IADsUser, objects), S_OK);
    directory_.ClearCalls();
    return objects;
  }
  /// The word of "imap" over users.
  std::uint32_t Aggregated(const std::vector<Lists>& users) {
    FeatureState state("imap");
    EXPECT_EQ(state.Aggregate(Bind(users)), S_OK);
    return state.word();
  }
  /// A state of that word.
  static FeatureState Of(std::string name, std::uint32_t word) {
    testing::FakeDirectory directory;
    directory.AddObject(kAda, UserWith({.enabled = (word & 1U) != 0 ? Lines{name} : Lines{},
                                        .disabled = (word & 2U) != 0 ? Lines{name} : Lines{}}));
    BoundObjects objects(1);
    EXPECT_EQ(directory.ADsGetObject(kAda, IID_IADs, objects.front()), S_OK);
    FeatureState state(std::move(name));
    EXPECT_EQ(state.Aggregate(objects), S_OK);
    EXPECT_EQ(state.word(), word);
    return state;
  }
  static FeatureState Enabled(const std::string& name) {
    FeatureState state = Of(name, 0);
    EXPECT_TRUE(state.Enable());
    return state;
  }
  static FeatureState Disabled(const std::string& name) {
    FeatureState state = Of(name, 0);
    EXPECT_TRUE(state.Disable());
    return state;
  }
  /// What the states stage on one user.
  Lines Written(const Lists& user, const FeatureStates& states) {
    const BoundObjects objects = Bind({user});
    EXPECT_EQ(WriteFeatureSets(*objects.front(), states), S_OK);
    using enum testing::DirectoryCall::Kind;
    return directory_.Log({kPut, kPutEx, kSetInfo});
  }

  testing::FakeDirectory directory_;
  FaultDirectory faulty_{directory_};
};

TEST_F(FeatureStateTest, ANewRecordHoldsAsEnabled) {
  const FeatureState state("imap");
  EXPECT_EQ(state.name(), "imap");
  EXPECT_EQ(state.word(), 1U);
}

TEST_F(FeatureStateTest, EachStateHasItsText) {
  EXPECT_EQ(Of("imap", 0).Text(), "Unset");
  EXPECT_EQ(Of("imap", 1).Text(), "Enabled");
  EXPECT_EQ(Of("imap", 2).Text(), "Disabled");
  EXPECT_EQ(Of("imap", 3).Text(), "Ambiguous");
  EXPECT_EQ(Enabled("imap").Text(), "Enabled");
  EXPECT_EQ(Disabled("imap").Text(), "Disabled");
}

// Aggregation.

TEST_F(FeatureStateTest, OneUserSaysWhatItsListsSay) {
  EXPECT_EQ(Aggregated({{}}), 0U);
  EXPECT_EQ(Aggregated({{.enabled = {"imap"}}}), 1U);
  EXPECT_EQ(Aggregated({{.disabled = {"imap"}}}), 2U);
  EXPECT_EQ(Aggregated({{.enabled = {"imap"}, .disabled = {"imap"}}}), 3U);
  EXPECT_EQ(Aggregated({{.enabled = {"pop3"}, .disabled = {"pop3"}}}), 0U);
  EXPECT_EQ(Aggregated({{.enabled = {"archiver", "imap", "pop3"}}}), 1U);
}

TEST_F(FeatureStateTest, NoUserSaysNothing) { EXPECT_EQ(Aggregated({}), 0U); }

TEST_F(FeatureStateTest, NamesAreComparedExactly) {
  EXPECT_EQ(Aggregated({{.enabled = {"IMAP"}, .disabled = {"imap4"}}}), 0U);
}

TEST_F(FeatureStateTest, UsersThatSayNothingDoNotCount) {
  EXPECT_EQ(Aggregated({{.enabled = {"imap"}}, {}}), 1U);
  EXPECT_EQ(Aggregated({{}, {.enabled = {"imap"}}}), 1U);
  EXPECT_EQ(Aggregated({{}, {}, {.disabled = {"imap"}}}), 2U);
  EXPECT_EQ(Aggregated({{}, {}, {}}), 0U);
}

TEST_F(FeatureStateTest, UsersThatDisagreeAreAmbiguous) {
  EXPECT_EQ(Aggregated({{.enabled = {"imap"}}, {.disabled = {"imap"}}}), 3U);
  EXPECT_EQ(Aggregated({{.disabled = {"imap"}}, {}, {.enabled = {"imap"}}}), 3U);
  EXPECT_EQ(Aggregated({{.enabled = {"imap"}, .disabled = {"imap"}}, {}}), 3U);
}

TEST_F(FeatureStateTest, UsersAreAskedInOrderEnabledFirst) {
  FeatureState state("imap");
  ASSERT_EQ(state.Aggregate(Bind({{}, {}})), S_OK);
  EXPECT_EQ(directory_.Log({testing::DirectoryCall::Kind::kGet}),
            (Lines{"Get LDAP://CN=Ada,DC=x peloraEnabledFeatures",
                   "Get LDAP://CN=Ada,DC=x peloraDisabledFeatures",
                   "Get LDAP://CN=Bob,DC=x peloraEnabledFeatures",
                   "Get LDAP://CN=Bob,DC=x peloraDisabledFeatures"}));
}

TEST_F(FeatureStateTest, AFailedReadingEndsTheAggregation) {
  for (std::size_t call = 1; call <= 4; ++call) {
    const BoundObjects objects = Bind({{.disabled = {"imap"}}, {.disabled = {"imap"}}});
    faulty_.plan().Fail(FaultPoint::kGet, call, E_ACCESSDENIED);
    FeatureState state("imap");
    EXPECT_EQ(state.Aggregate(objects), E_ACCESSDENIED) << call;
    EXPECT_EQ(state.word(), 1U);
    EXPECT_EQ(directory_.calls().size(), call - 1);
  }
}

// Choices.

struct Choice {
  std::uint32_t before;
  std::uint32_t enable;
  std::uint32_t disable;
  std::uint32_t toggle;
};

TEST_F(FeatureStateTest, EveryChoiceOnEveryState) {
  constexpr std::array kChoices = {Choice{0, 5, 6, 5}, Choice{1, 1, 6, 6}, Choice{2, 5, 2, 5},
                                   Choice{3, 5, 6, 6}};
  for (const Choice& row : kChoices) {
    SCOPED_TRACE(row.before);
    FeatureState state = Of("imap", row.before);
    EXPECT_EQ(state.Enable(), row.enable != row.before);
    EXPECT_EQ(state.word(), row.enable);
    state = Of("imap", row.before);
    EXPECT_EQ(state.Disable(), row.disable != row.before);
    EXPECT_EQ(state.word(), row.disable);
    state = Of("imap", row.before);
    state.Toggle();
    EXPECT_EQ(state.word(), row.toggle);
  }
}

TEST_F(FeatureStateTest, EveryChoiceOnAChoice) {
  FeatureState state = Enabled("imap");
  EXPECT_FALSE(state.Enable());
  EXPECT_EQ(state.word(), 5U);
  EXPECT_TRUE(state.Disable());
  EXPECT_EQ(state.word(), 6U);
  EXPECT_FALSE(state.Disable());
  EXPECT_EQ(state.word(), 6U);
  state.Toggle();
  EXPECT_EQ(state.word(), 5U);
  state.Toggle();
  EXPECT_EQ(state.word(), 6U);
}

TEST_F(FeatureStateTest, WrittenChoicesKeepTheirState) {
  FeatureState state = Enabled("imap");
  state.ClearChanged();
  EXPECT_EQ(state.word(), 1U);
  state.Toggle();
  state.ClearChanged();
  EXPECT_EQ(state.word(), 2U);
}

// Writing one object.

TEST_F(FeatureStateTest, AUserWithoutListsGetsOneValueAndTheOtherListCleared) {
  EXPECT_EQ(Written({}, {{0, Enabled("imap")}}),
            (Lines{"Put LDAP://CN=Ada,DC=x peloraEnabledFeatures \"imap\"",
                   "PutEx CLEAR LDAP://CN=Ada,DC=x peloraDisabledFeatures nothing"}));
  EXPECT_EQ(Written({}, {{0, Disabled("imap")}}),
            (Lines{"PutEx CLEAR LDAP://CN=Ada,DC=x peloraEnabledFeatures nothing",
                   "Put LDAP://CN=Ada,DC=x peloraDisabledFeatures \"imap\""}));
}

TEST_F(FeatureStateTest, AChoiceMovesTheFeatureToTheOtherList) {
  EXPECT_EQ(Written({.disabled = {"imap"}}, {{0, Enabled("imap")}}),
            (Lines{"Put LDAP://CN=Ada,DC=x peloraEnabledFeatures \"imap\"",
                   "PutEx CLEAR LDAP://CN=Ada,DC=x peloraDisabledFeatures nothing"}));
  EXPECT_EQ(Written({.enabled = {"imap", "pop3"}, .disabled = {"zzz"}}, {{0, Disabled("imap")}}),
            (Lines{"Put LDAP://CN=Ada,DC=x peloraEnabledFeatures \"pop3\"",
                   "Put LDAP://CN=Ada,DC=x peloraDisabledFeatures [\"imap\", \"zzz\"]"}));
}

TEST_F(FeatureStateTest, NamesThatAreNoFeaturesStay) {
  EXPECT_EQ(Written({.enabled = {"zeta", "Imap"}, .disabled = {"legacy", "imap"}},
                    {{0, Enabled("imap")}}),
            (Lines{"Put LDAP://CN=Ada,DC=x peloraEnabledFeatures [\"Imap\", \"imap\", \"zeta\"]",
                   "Put LDAP://CN=Ada,DC=x peloraDisabledFeatures \"legacy\""}));
}

TEST_F(FeatureStateTest, AUserWhoHasItAlreadyIsNotWritten) {
  EXPECT_EQ(Written({.enabled = {"imap"}}, {{0, Enabled("imap")}}), Lines{});
  EXPECT_EQ(Written({.disabled = {"imap"}}, {{0, Disabled("imap")}}), Lines{});
}

TEST_F(FeatureStateTest, AUserWithTheFeatureInBothListsKeepsBoth) {
  const Lists both = {.enabled = {"imap"}, .disabled = {"imap"}};
  EXPECT_EQ(Written(both, {{0, Enabled("imap")}}), Lines{});
  EXPECT_EQ(Written(both, {{0, Disabled("imap")}}), Lines{});
  // Another feature's change writes both lists as they are.
  EXPECT_EQ(Written(both, {{0, Disabled("imap")}, {1, Enabled("pop3")}}),
            (Lines{"Put LDAP://CN=Ada,DC=x peloraEnabledFeatures [\"imap\", \"pop3\"]",
                   "Put LDAP://CN=Ada,DC=x peloraDisabledFeatures \"imap\""}));
}

TEST_F(FeatureStateTest, OnlyChosenFeaturesAreWritten) {
  for (const std::uint32_t word : {0U, 1U, 2U, 3U}) {
    EXPECT_EQ(Written({}, {{0, Of("imap", word)}}), Lines{}) << word;
  }
  EXPECT_EQ(Written({}, {{0, Of("imap", 1)}, {1, Enabled("pop3")}}),
            (Lines{"Put LDAP://CN=Ada,DC=x peloraEnabledFeatures \"pop3\"",
                   "PutEx CLEAR LDAP://CN=Ada,DC=x peloraDisabledFeatures nothing"}));
}

TEST_F(FeatureStateTest, EveryFailureOfReadingOrStagingIsReturned) {
  const FeatureStates states = {{0, Enabled("imap")}};
  struct Case {
    FaultPoint point;
    std::size_t nth;
    Lines calls;
  };
  const Lines reads = {"Get LDAP://CN=Ada,DC=x peloraEnabledFeatures",
                       "Get LDAP://CN=Ada,DC=x peloraDisabledFeatures"};
  const Lines staged = {reads[0], reads[1],
                        "Put LDAP://CN=Ada,DC=x peloraEnabledFeatures \"imap\""};
  for (const Case& row : {Case{FaultPoint::kGet, 1, {}}, Case{FaultPoint::kGet, 2, {reads[0]}},
                          Case{FaultPoint::kPut, 1, reads}, Case{FaultPoint::kPutEx, 1, staged}}) {
    const BoundObjects objects = Bind({{}});
    faulty_.plan().Fail(row.point, row.nth, E_ACCESSDENIED);
    EXPECT_EQ(WriteFeatureSets(*objects.front(), states), E_ACCESSDENIED);
    using enum testing::DirectoryCall::Kind;
    EXPECT_EQ(directory_.Log({kGet, kPut, kPutEx, kSetInfo}), row.calls);
    EXPECT_EQ(faulty_.plan().pending(), 0U);
  }
}

// The features.

TEST(FeatureTable, ListsTheServersFeatures) {
  const FeatureTable& features = ServerFeatures();
  EXPECT_EQ(features.Names(), (StringSet{"archiver", "imap", "pop3"}));
  EXPECT_TRUE(features.IsPlain("imap"));
  EXPECT_TRUE(features.IsPlain("pop3"));
  EXPECT_FALSE(features.IsPlain("archiver"));
  EXPECT_FALSE(features.IsPlain("IMAP"));
  EXPECT_NE(features.FactoryOf("archiver"), nullptr);
  EXPECT_EQ(features.FactoryOf("imap"), nullptr);
  EXPECT_EQ(features.FactoryOf("other"), nullptr);
}

}  // namespace
}  // namespace pelora
