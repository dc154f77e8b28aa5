// SPDX-License-Identifier: Apache-2.0
// The features tab driven at random, step by step, and after each step compared with what a simple
// oracle says of it: what it shows, what it offers, and what the directory holds.
#include <gtest/gtest.h>

#include <random>
#include <ranges>

#include "tests/unit/features/features_bench.h"
#include "tests/unit/features/features_oracle.h"

namespace pelora {
namespace {

using testing::FaultPoint;
using testing::FeaturesOracle;
using testing::Names;
using testing::OracleFault;
using testing::OracleUser;

const std::vector<std::string> kPaths = {testing::kAda, testing::kBob, testing::kCyd};
const std::vector<std::string> kListed = {"imap", "pop3", "archiver", "IMAP", "legacy"};
const std::vector<std::string> kServers = {"arc1", "arc2", "Arc3"};
constexpr std::size_t kSeeds = 60;
constexpr std::size_t kStepsPerSeed = 120;
constexpr std::array kFaultPoints = {FaultPoint::kGetObject, FaultPoint::kGet, FaultPoint::kPut,
                                     FaultPoint::kPutEx, FaultPoint::kSetInfo};

class FeaturesRandomTest : public testing::FeaturesTest {
 protected:
  void RunSeed(std::uint32_t seed);
  /// How often each kind of step was done, and how applies ended.
  std::map<std::string, std::size_t> counts_;

 private:
  using Step = void (FeaturesRandomTest::*)();

  std::size_t Below(std::size_t limit) {
    return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_);
  }
  bool Coin() { return Below(2) == 0; }
  /// Each of the names, one time in `one_in`.
  Names SomeOf(const std::vector<std::string>& names, std::size_t one_in = 3) {
    Names some;
    for (const std::string& name : names) {
      if (Below(one_in) == 0) some.insert(name);
    }
    return some;
  }
  /// Of many users little is said.
  OracleUser SomeUser() {
    const std::size_t one_in = Coin() ? 3 : 12;
    return {SomeOf(kListed, one_in), SomeOf(kListed, one_in), SomeOf(kServers, one_in)};
  }
  void Store(std::size_t user);
  void StartOver();
  void Reopen();

  void SelectRows();
  void ClickButton();
  void ToggleRow();
  void EditArchiver();
  void ChangeUserElsewhere();
  void ApplyOnce();
  void Compare();

  static Names Listed(const Variant& value);

  std::mt19937 random_;
  std::optional<FeaturesOracle> oracle_;
};

void FeaturesRandomTest::Store(std::size_t user) {
  const OracleUser& wanted = oracle_->users()[user];
  const auto list = [](const Names& names) { return std::vector(names.begin(), names.end()); };
  AddUser(kPaths[user], {list(wanted.enabled), list(wanted.disabled), list(wanted.servers)});
}

void FeaturesRandomTest::StartOver() {
  std::vector<OracleUser> users(1 + Below(kPaths.size()));
  std::ranges::generate(users, [this] { return SomeUser(); });
  // Servers agree more often than chance would have it.
  if (Coin()) {
    for (OracleUser& user : users) user.servers = users.front().servers;
  }
  oracle_.emplace(std::move(users));
  for (std::size_t user = 0; user < oracle_->users().size(); ++user) Store(user);
  Reopen();
}

void FeaturesRandomTest::Reopen() {
  const auto count = static_cast<std::ptrdiff_t>(oracle_->users().size());
  Open({kPaths.begin(), kPaths.begin() + count});
  oracle_->Open();
}

void FeaturesRandomTest::SelectRows() {
  std::vector<RowIndex> rows;
  for (RowIndex row = 0; row < 3; ++row) {
    if (Below(5) < 2) rows.push_back(row);
  }
  oracle_->Select({rows.begin(), rows.end()});
  std::ranges::shuffle(rows, random_);
  Select(rows);
}

void FeaturesRandomTest::ClickButton() {
  const bool enable = Coin();
  // Also while the button is off: the rules hold for whatever is selected.
  dialog().Notify(enable ? IDC_FEATURE_ENABLE : IDC_FEATURE_DISABLE, ControlNotification::kClicked);
  enable ? oracle_->Enable() : oracle_->Disable();
}

void FeaturesRandomTest::ToggleRow() {
  const RowIndex row = 1 + Below(2);
  DoubleClick(row);
  oracle_->Select({row});
  oracle_->Toggle(row);
}

void FeaturesRandomTest::EditArchiver() {
  const Names wanted = SomeOf(kServers);
  const bool asks = oracle_->AsksBeforeEditing();
  const bool agrees = !asks || Coin();
  const bool confirms = Below(4) != 0;
  if (asks) bench_.messages.AnswerNext(agrees ? kDialogYes : kDialogNo);
  if (agrees) {
    const Names shown = oracle_->servers();
    bench_.dialogs.PlayNext([=](HeadlessUser& user) {
      IListBox& list = user.dialog().ListBox(IDC_ARCHIVER_LIST);
      EXPECT_EQ(list.Count(), shown.size());
      while (list.Count() > 0) {
        user.SelectListRow(IDC_ARCHIVER_LIST, list.Count() - 1);
        user.Click(IDC_ARCHIVER_REMOVE);
      }
      for (auto server = wanted.rbegin(); server != wanted.rend(); ++server) {
        user.EraseText(IDC_ARCHIVER_NAME);
        user.TypeText(IDC_ARCHIVER_NAME, *server);
        user.Click(IDC_ARCHIVER_ADD);
      }
      user.Click(static_cast<ControlId>(confirms ? kDialogOk : kDialogCancel));
    });
  }
  if (Coin()) {
    Select({testing::kArchiverRow});
    user().Click(IDC_FEATURE_PROPERTIES);
  } else {
    DoubleClick(testing::kArchiverRow);
  }
  oracle_->Select({testing::kArchiverRow});
  if (agrees && confirms) oracle_->EditServers(wanted);
  EXPECT_EQ(Boxes().size(), asks ? 1U : 0U);
  EXPECT_EQ(bench_.messages.AnswersLeft(), 0U);
  EXPECT_EQ(bench_.dialogs.ScriptsLeft(), 0U);
}

void FeaturesRandomTest::ChangeUserElsewhere() {
  const std::size_t user = Below(oracle_->users().size());
  oracle_->users()[user] = SomeUser();
  Store(user);
}

void FeaturesRandomTest::ApplyOnce() {
  std::optional<OracleFault> fault;
  if (Coin()) {
    const std::size_t kind = Below(kFaultPoints.size());
    fault = {static_cast<OracleFault::Kind>(kind), 1 + Below(2 * oracle_->users().size())};
    faults().Fail(kFaultPoints.at(kind), fault->nth, E_ACCESSDENIED);
  }
  const std::optional<std::string> failure = oracle_->Apply(fault);
  EXPECT_EQ(page().Apply(), !failure);
  ++counts_[failure.value_or("applied")];
  std::vector<std::string> boxes;
  if (failure) boxes.push_back(*failure + "\r\n\r\nError code: 0X80070005");
  EXPECT_EQ(Boxes(), boxes);
  // A fault whose call never came must not wait for another step.
  faults() = {};
}

Names FeaturesRandomTest::Listed(const Variant& value) {
  if (value.type() == VT_BSTR) return {value.string()};
  Names names;
  if (value.type() == kVariantArray) {
    for (const Variant& element : value.array()) names.insert(element.string());
  }
  return names;
}

void FeaturesRandomTest::Compare() {
  ASSERT_EQ(Rows(), oracle_->Rows());
  ASSERT_EQ(Buttons(), oracle_->Buttons());
  ASSERT_EQ(page().IsModified(), oracle_->modified());
  for (std::size_t user = 0; user < oracle_->users().size(); ++user) {
    const auto value = [&](const char* name) {
      return Listed(bench_.directory.Value(kPaths[user], name));
    };
    const OracleUser stored = {value(testing::kEnabledList), value(testing::kDisabledList),
                               value(testing::kServerList)};
    ASSERT_EQ(stored, oracle_->users()[user]) << kPaths[user];
  }
  ASSERT_EQ(bench_.directory.live_objects(), 0U);
}

void FeaturesRandomTest::RunSeed(std::uint32_t seed) {
  using This = FeaturesRandomTest;
  struct Row {
    const char* name;
    Step step;
    std::size_t weight;
  };
  constexpr std::array kSteps = {
      Row{"select", &This::SelectRows, 5},
      Row{"click", &This::ClickButton, 4},
      Row{"toggle", &This::ToggleRow, 3},
      Row{"edit", &This::EditArchiver, 2},
      Row{"elsewhere", &This::ChangeUserElsewhere, 1},
      Row{"apply", &This::ApplyOnce, 5},
      Row{"reopen", &This::Reopen, 1},
  };
  std::vector<double> weights;
  for (const Row& row : kSteps) weights.push_back(static_cast<double>(row.weight));
  std::discrete_distribution<std::size_t> choice(weights.begin(), weights.end());
  random_.seed(seed);
  StartOver();
  std::string history;
  for (std::size_t step = 0; step < kStepsPerSeed; ++step) {
    const Row& row = kSteps.at(choice(random_));
    history += std::string(" ") + row.name;
    SCOPED_TRACE("seed " + std::to_string(seed) + ":" + history);
    (this->*row.step)();
    ++counts_[row.name];
    ASSERT_NO_FATAL_FAILURE(Compare());
    if (HasFailure()) return;
  }
}

TEST_F(FeaturesRandomTest, DoesWhatTheOracleSays) {
  for (std::uint32_t seed = 1; seed <= kSeeds; ++seed) {
    ASSERT_NO_FATAL_FAILURE(RunSeed(seed));
    if (HasFailure()) return;
  }
  // Every way in which an apply can end was gone often enough to count.
  for (const char* ending : {"applied", "Unable to get connection with the ldap user",
                             "Failed to update object: ", "Unknown error occured"}) {
    EXPECT_GT(counts_[ending], 50U) << ending;
  }
  std::size_t steps = 0;
  for (const char* step : {"select", "click", "toggle", "edit", "elsewhere", "apply", "reopen"}) {
    EXPECT_GT(counts_[step], 100U) << step;
    steps += counts_[step];
  }
  EXPECT_EQ(steps, kSeeds * kStepsPerSeed);
}

}  // namespace
}  // namespace pelora
