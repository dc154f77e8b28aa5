// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <set>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "hosts/session/writing_desk.h"
#include "tests/harness/dice.h"

namespace pelora::testing {

/// A desk at which somebody without a plan sits: looks at changes or does not, takes objects out,
/// goes back, lets the other's value stay or not, tries again or does not, as the dice say.
class RandomDesk final : public session::IWritingDesk {
 public:
  explicit RandomDesk(Dice dice) : dice_(std::move(dice)) {}

  /// What was answered since this was called last: distinguished names of the objects that were
  /// taken out, and the attributes in which the other's value was to stay, with their objects.
  struct Answers {
    std::set<std::string> taken_out;
    std::set<std::pair<std::string, std::string>> theirs;
    bool has_gone_back = false;

    void Add(const Answers& others) {
      taken_out.insert(others.taken_out.begin(), others.taken_out.end());
      theirs.insert(others.theirs.begin(), others.theirs.end());
    }
  };
  [[nodiscard]] Answers Take() { return std::exchange(answers_, {}); }

  [[nodiscard]] bool ReviewsEverything() const override { return reviews_everything_; }
  [[nodiscard]] bool ShowReview(IDialog* /*owner*/, session::Review& review) override {
    reviews_everything_ = Roll(2) == 0;
    if (Roll(8) == 0) {
      answers_.has_gone_back = true;
      return false;
    }
    for (session::ReviewedChange& change : review.changes) {
      change.is_wanted = Roll(4) != 0;
      if (!change.is_wanted) answers_.taken_out.insert(change.dn);
    }
    return true;
  }
  [[nodiscard]] bool ShowConflicts(IDialog* /*owner*/,
                                   std::vector<session::ShownConflict>& conflicts) override {
    using Choice = session::ShownConflict::Choice;
    if (Roll(5) == 0) return false;
    for (session::ShownConflict& conflict : conflicts) {
      conflict.choice = Roll(2) == 0 ? Choice::kTheirs : Choice::kMine;
      if (conflict.choice == Choice::kTheirs) {
        answers_.theirs.emplace(conflict.dn, conflict.attribute);
      }
    }
    return true;
  }
  [[nodiscard]] bool ShowResults(IDialog* /*owner*/,
                                 std::span<const session::WrittenChange> /*results*/) override {
    return Roll(2) == 0;
  }
  void ShowFailure(IDialog* /*owner*/, const session::ShownFailure& /*failure*/) override {}

 private:
  [[nodiscard]] std::size_t Roll(std::size_t sides) { return dice_(sides); }

  Dice dice_;
  bool reviews_everything_ = false;
  Answers answers_;
};

}  // namespace pelora::testing
