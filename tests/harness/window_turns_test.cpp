// SPDX-License-Identifier: Apache-2.0
// A sheet of many objects is opened and written, while some are changed by others and some are
// refused; it is tried again, closed and taken back: what is done on the window's thread is done in
// pieces that do not grow with the objects, so that the window answers between them. Judged by what
// each piece does with memory, not by a clock.
#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "hosts/ldap/ldap_status.h"
#include "hosts/session/change_history.h"
#include "hosts/session/let_go.h"
#include "tests/harness/failing_allocator.h"
#include "tests/harness/sheet_scene.h"
#include "tests/support/memory_store.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/unwilling_store.h"

namespace pelora::testing {
namespace {

/// Does errands at once, and counts how much is done between two turns of a window's events.
class CountedErrands final : public session::IErrands {
 public:
  void Run(const std::string& what, const Work& work) override {
    Breathe();
    errands_.Run(what, work);
    // That was done beside the window.
    Begin();
  }
  void LetGo(std::shared_ptr<void> what) noexcept override {
    Breathe();
    what.reset();
    Begin();
  }
  [[nodiscard]] bool IsWithin() const override { return errands_.IsWithin(); }
  void Breathe() override {
    if (IsWithin()) return;
    longest_ = std::max(longest_, FailingAllocations::count_with_releases() - begin_);
    ++turns_;
    Begin();
  }

  void Begin() { begin_ = FailingAllocations::count_with_releases(); }
  [[nodiscard]] std::size_t longest() const { return longest_; }
  [[nodiscard]] std::size_t turns() const { return turns_; }

 private:
  session::ErrandsAtOnce errands_;
  std::size_t begin_ = 0;
  std::size_t longest_ = 0;
  std::size_t turns_ = 0;
};

/// Every second change is refused.
ldap::StoreStatus Refuse(int asked) {
  if (asked % 2 == 0) return {ldap::kLdapInsufficientAccessRights, "no right"};
  return {};
}

/// Somebody who writes everything, over what others have written meanwhile, and tries again what
/// was refused.
class StubbornDesk final : public session::IWritingDesk {
 public:
  StubbornDesk(CountedErrands& errands, MemoryStore& directory, UnwillingStore& store)
      : errands_(errands), directory_(directory), store_(store) {}

  std::size_t conflicts = 0;
  std::size_t failures = 0;
  std::size_t left = 0;

  [[nodiscard]] bool ReviewsEverything() const override { return false; }
  [[nodiscard]] bool ShowReview(IDialog* /*owner*/, session::Review& review) override {
    errands_.Breathe();
    // Meanwhile somebody else is at it, and some are taken out.
    for (std::size_t at = 0; at < review.changes.size(); at += 3) {
      const ldap::Modification theirs{.attribute = "peloraQuotaHard", .values = {"4711"}};
      EXPECT_TRUE(directory_.Modify(review.changes[at].dn, {&theirs, 1}).Ok());
    }
    for (std::size_t at = 1; at < review.changes.size(); at += 3) {
      review.changes[at].is_wanted = false;
    }
    errands_.Begin();
    return true;
  }
  [[nodiscard]] bool ShowConflicts(IDialog* /*owner*/,
                                   std::vector<session::ShownConflict>& shown) override {
    errands_.Breathe();
    conflicts += shown.size();
    for (auto& conflict : shown) conflict.choice = session::ShownConflict::Choice::kMine;
    errands_.Begin();
    return true;
  }
  [[nodiscard]] bool ShowResults(IDialog* /*owner*/,
                                 std::span<const session::WrittenChange> results) override {
    errands_.Breathe();
    left = static_cast<std::size_t>(std::ranges::count_if(
        results, [](const session::WrittenChange& row) { return !row.result.IsDone(); }));
    failures += left;
    store_.Mend();
    errands_.Begin();
    return left > 0;
  }
  void ShowFailure(IDialog* /*owner*/, const session::ShownFailure& /*failure*/) override {
    ADD_FAILURE() << "there are several objects";
  }

 private:
  CountedErrands& errands_;
  MemoryStore& directory_;
  UnwillingStore& store_;
};

/// Takes back what was written last, as the console does.
bool IsTakenBack(session::ChangeHistory& history, UnwillingStore& store, CountedErrands& errands) {
  std::vector<session::PastChange> past;
  errands.Run("Reading what was written...", [&](auto& /*errand*/) { past = history.List(); });
  if (past.empty()) return false;
  std::vector<changes::Result> results = history.Undo(past.front().id, store, errands);
  const bool is_all_done =
      !results.empty() && std::ranges::all_of(results, &changes::Result::IsDone);
  session::LetGoOf(results, errands);
  return is_all_done;
}

struct Pieces {
  std::size_t longest = 0;
  std::size_t turns = 0;
};

/// Edits every field of so many users and writes them.
Pieces WriteMany(std::size_t count) {
  std::vector<std::string> names;
  for (std::size_t at = 0; at < count; ++at) {
    names.push_back("CN=user" + std::to_string(at) + "," + MemoryStore::kBase);
  }
  const TemporaryFolder folder;
  MemoryStore directory;
  UnwillingStore store(directory, Refuse);
  CountedErrands errands;
  StubbornDesk desk(errands, directory, store);
  session::ChangeHistory history(folder.File("changes"), "x", directory.schema());
  SheetScene scene(store, "user", names,
                   {.chosen = std::string("CN=chosen,") + MemoryStore::kBase, .account = false});
  for (ldap::Entry& entry : scene.FirstEntries()) directory.Place(std::move(entry));
  scene.SitAt(desk);
  scene.RunErrandsBy(errands);
  scene.KeepIn(history);
  const FailingAllocations counting(0);
  errands.Begin();
  EXPECT_EQ(scene.Open(), "");
  errands.Breathe();
  EXPECT_GT(scene.Edit(), 0U);
  errands.Begin();
  EXPECT_TRUE(scene.Ok());
  errands.Breathe();
  scene.Close();
  errands.Breathe();
  EXPECT_TRUE(IsTakenBack(history, store, errands));
  EXPECT_GT(desk.conflicts, 0U);
  EXPECT_GT(desk.failures, 0U);
  EXPECT_EQ(desk.left, 0U);
  return {.longest = errands.longest(), .turns = errands.turns()};
}

TEST(WindowTurns, ManyAreWrittenInPiecesThatHardlyGrow) {
  constexpr std::size_t kFew = 30;
  constexpr std::size_t kMany = 150;
  // What a page does at one go with each of thousands has to be next to nothing. So many uses are
  // made of 5,000 objects within a few milliseconds; what is known of one object are hundreds.
  constexpr std::size_t kUsesOfEach = 24;
  const Pieces few = WriteMany(kFew);
  const Pieces many = WriteMany(kMany);
  std::cout << "the largest piece of work on the window's thread, in uses of memory: "
            << few.longest << " of " << kFew << " objects, " << many.longest << " of " << kMany
            << "\n";
  EXPECT_LT(many.longest, few.longest + kUsesOfEach * (kMany - kFew));
  EXPECT_GT(many.turns, few.turns + (kMany - kFew));
}

}  // namespace
}  // namespace pelora::testing
