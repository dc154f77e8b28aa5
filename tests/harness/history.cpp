// SPDX-License-Identifier: Apache-2.0
#include "tests/harness/history.h"

#include <algorithm>
#include <cstddef>

namespace pelora::testing {
namespace {

using Faults = std::vector<std::string>;

/// A replacement, and whose it is.
struct Edge {
  std::size_t operation = 0;
  const Replacement* replacement = nullptr;
};
using Chain = std::vector<Edge>;
/// By the value that is replaced.
using Edges = std::multimap<std::string, Edge>;

class Checker {
 public:
  explicit Checker(const History& history) : history_(history) {
    was_done_.resize(history.operations.size());
  }

  Faults Check() {
    for (const auto& [attribute, before] : history_.before) CheckAttribute(attribute, before);
    CheckLists();
    CheckWholeness();
    return std::move(faults_);
  }

 private:
  /// What is known of an operation's parts: how many were done, and how many were not.
  struct Parts {
    std::size_t done = 0;
    std::size_t left = 0;
  };

  [[nodiscard]] const Operation& At(std::size_t operation) const {
    return history_.operations[operation];
  }

  void CheckAttribute(const std::string& attribute, const std::string& before);
  bool Follow(const std::string& value, const std::string& last, std::size_t accepted_left,
              const Edges& edges, Chain& chain) const;
  void CheckTimes(const std::string& attribute, const Chain& chain);
  void CheckLists();
  void CheckValue(const std::string& attribute, const std::string& value, bool was_there);
  void CheckWholeness();

  const History& history_;
  std::vector<Parts> was_done_;
  Faults faults_;
};

/// Looks for the way from a value to the last one that takes every accepted replacement once. Where
/// only unknown ones lead on, one of them was done, or it ends there.
bool Checker::Follow(const std::string& value, const std::string& last, std::size_t accepted_left,
                     const Edges& edges, Chain& chain) const {
  if (accepted_left == 0 && value == last) return true;
  const auto [first, end] = edges.equal_range(value);
  for (auto way = first; way != end; ++way) {
    const Edge& edge = way->second;
    const bool is_accepted = At(edge.operation).answer == Answer::kAccepted;
    if (is_accepted && accepted_left == 0) continue;
    chain.push_back(edge);
    if (Follow(edge.replacement->wanted, last, accepted_left - (is_accepted ? 1 : 0), edges,
               chain)) {
      return true;
    }
    chain.pop_back();
  }
  return false;
}

void Checker::CheckAttribute(const std::string& attribute, const std::string& before) {
  Edges edges;
  std::size_t accepted = 0;
  for (std::size_t at = 0; at < history_.operations.size(); ++at) {
    if (At(at).answer == Answer::kRefused) continue;
    for (const Replacement& replacement : At(at).replacements) {
      if (replacement.attribute != attribute) continue;
      edges.emplace(replacement.seen, Edge{at, &replacement});
      if (At(at).answer == Answer::kAccepted) ++accepted;
    }
  }
  Chain chain;
  if (!Follow(before, history_.after.at(attribute), accepted, edges, chain)) {
    faults_.push_back(attribute + ": no order of the accepted changes leads from " + before +
                      " to " + history_.after.at(attribute));
    return;
  }
  CheckTimes(attribute, chain);
  std::set<const Replacement*> done;
  for (const Edge& edge : chain) done.insert(edge.replacement);
  for (const auto& [seen, edge] : edges) {
    const bool is_done = done.contains(edge.replacement);
    ++(is_done ? was_done_[edge.operation].done : was_done_[edge.operation].left);
  }
}

/// Whoever was through before another began cannot come after it.
void Checker::CheckTimes(const std::string& attribute, const Chain& chain) {
  std::uint64_t latest_begin = 0;
  for (const Edge& edge : chain) {
    const Operation& operation = At(edge.operation);
    if (operation.end < latest_begin) {
      faults_.push_back(attribute + ": " + edge.replacement->wanted +
                        " took effect after its change was over");
    }
    latest_begin = std::max(latest_begin, operation.begin);
  }
}

void Checker::CheckLists() {
  for (const auto& [attribute, before] : history_.lists_before) {
    std::set<std::string> values = before;
    const std::set<std::string>& after = history_.lists_after.at(attribute);
    values.insert(after.begin(), after.end());
    for (const Operation& operation : history_.operations) {
      for (const ListChange& change : operation.list_changes) {
        if (change.attribute == attribute) values.insert(change.value);
      }
    }
    for (const std::string& value : values) {
      CheckValue(attribute, value, before.contains(value));
    }
  }
}

/// A value is put in once at most, and never again once it was taken out.
void Checker::CheckValue(const std::string& attribute, const std::string& value, bool was_there) {
  const bool is_there = history_.lists_after.at(attribute).contains(value);
  bool may_come = was_there;
  bool must_come = was_there;
  bool may_go = false;
  bool must_go = false;
  for (std::size_t at = 0; at < history_.operations.size(); ++at) {
    const Operation& operation = At(at);
    for (const ListChange& change : operation.list_changes) {
      if (change.attribute != attribute || change.value != value) continue;
      const bool may = operation.answer != Answer::kRefused;
      const bool must = operation.answer == Answer::kAccepted;
      (change.is_added ? may_come : may_go) |= may;
      (change.is_added ? must_come : must_go) |= must;
      // What is known of an unknown one, where nobody else had to do with it.
      if (change.is_added && may && is_there) ++was_done_[at].done;
      if (!change.is_added && may && is_there) ++was_done_[at].left;
    }
  }
  if (is_there && !may_come) faults_.push_back(attribute + ": " + value + " was refused, and came");
  if (is_there && must_go)
    faults_.push_back(attribute + ": " + value + " was taken out, and is there");
  if (!is_there && must_come && !may_go) faults_.push_back(attribute + ": " + value + " is lost");
}

void Checker::CheckWholeness() {
  for (std::size_t at = 0; at < was_done_.size(); ++at) {
    if (was_done_[at].done == 0 || was_done_[at].left == 0) continue;
    faults_.push_back("a change was half done: operation " + std::to_string(at));
  }
}

}  // namespace

std::vector<std::string> FaultsOf(const History& history) { return Checker(history).Check(); }

}  // namespace pelora::testing
