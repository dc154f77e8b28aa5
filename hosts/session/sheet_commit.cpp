// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/sheet_commit.h"

#include <algorithm>
#include <set>
#include <utility>

#include "hosts/changes/change_runner.h"
#include "hosts/changes/ldif_changes.h"
#include "hosts/ldap/case_fold.h"
#include "hosts/session/shown_failure.h"

namespace pelora::session {

using changes::Change;
using changes::Outcome;
using changes::Result;
using ldap::FoldCase;

bool SheetCommit::Pending::Takes(const Change& other) const {
  return change.kind == Change::Kind::kModify && other.kind == Change::Kind::kModify &&
         std::ranges::none_of(other.attributes, [this](const changes::ValueChange& value) {
           return change.Find(value.attribute) != nullptr;
         });
}

void SheetCommit::Pending::Take(const CommittedTab& tab, Change other) {
  if (parts.empty()) {
    change = other;
  } else {
    change.attributes.insert(change.attributes.end(), other.attributes.begin(),
                             other.attributes.end());
  }
  parts.push_back({.tab = tab, .change = std::move(other)});
}

SheetCommit::Plan SheetCommit::MakePlan() const {
  Plan plan;
  // Where the first change of an object stands.
  std::map<std::string, std::size_t> places;
  for (const CommittedTab& tab : tabs_) {
    for (Change& change : tab.recording->TakeRecorded()) {
      surroundings_.errands.Breathe();
      const auto [place, is_first] = places.emplace(FoldCase(change.dn), plan.size());
      const bool joins = !is_first && plan[place->second].Takes(change);
      Pending& pending = joins ? plan[place->second] : plan.emplace_back();
      pending.Take(tab, std::move(change));
    }
  }
  return plan;
}

SheetCommit::Plan SheetCommit::PlanOf(const std::vector<std::string>& keys) const {
  Plan plan = MakePlan();
  const std::set<std::string> wanted(keys.begin(), keys.end());
  std::erase_if(plan, [&wanted](const Pending& pending) {
    return !wanted.contains(FoldCase(pending.change.dn));
  });
  return plan;
}

std::optional<std::size_t> SheetCommit::PageLeft() const {
  const Plan left = MakePlan();
  if (left.empty()) return std::nullopt;
  return left.front().parts.front().tab.page;
}

bool SheetCommit::IsDone(const std::string& dn) const {
  const auto ended = ended_.find(FoldCase(dn));
  return ended != ended_.end() && ended->second.IsDone();
}

std::optional<std::size_t> SheetCommit::Run() {
  Plan plan = MakePlan();
  if (plan.empty()) return std::nullopt;
  return surroundings_.desk == nullptr ? RunAtOnce(plan) : RunAtDesk(std::move(plan));
}

SheetCommit::Results SheetCommit::Write(const Plan& plan, bool stops_at_first) {
  std::vector<Change> all;
  for (const Pending& pending : plan) {
    surroundings_.errands.Breathe();
    all.push_back(pending.change);
  }
  Results results(plan.size());
  const auto write = [&](IErrand& errand) {
    ldap::IDirectoryStore& store = surroundings_.store;
    store.StopOn(errand.give_up());
    const changes::RunOptions options{
        .stops_at_first = stops_at_first, .stop = errand.stop(), .log = log_.get()};
    changes::RunChanges(store, all, options, [&](std::size_t at, const Result& result) {
      results[at] = result;
      errand.Advance(at + 1, all.size() > 1 ? all.size() : 0);
    });
    store.StopOn({});
  };
  const std::string what =
      all.size() == 1 ? "Writing the changes of " + surroundings_.name_of(all[0].dn)
                      : "Writing the changes of " + std::to_string(all.size()) + " objects";
  surroundings_.errands.Run(what + "...", write);
  for (std::size_t at = 0; at < plan.size(); ++at) {
    surroundings_.errands.Breathe();
    for (const Pending::Part& part : plan[at].parts) {
      part.tab.recording->Settle(part.change, results[at]);
    }
    ended_.insert_or_assign(FoldCase(plan[at].change.dn), results[at]);
  }
  return results;
}

void SheetCommit::BeginLog(const Plan& plan) {
  if (surroundings_.history == nullptr || plan.empty()) return;
  std::vector<std::string> names;
  std::vector<std::string> fields;
  for (const Pending& pending : plan) {
    surroundings_.errands.Breathe();
    names.push_back(surroundings_.name_of(pending.change.dn));
    for (const changes::ValueChange& value : pending.change.attributes) {
      std::string field = surroundings_.book.LabelOf(value.attribute);
      if (std::ranges::find(fields, field) == fields.end()) fields.push_back(std::move(field));
    }
  }
  log_ = surroundings_.history->Begin(std::move(names), std::move(fields));
}

std::optional<std::size_t> SheetCommit::RunAtOnce(const Plan& plan) {
  BeginLog(plan);
  const Results results = Write(plan, true);
  const auto left = std::ranges::find_if(results, [](const Result& r) { return !r.IsDone(); });
  if (left == results.end()) return std::nullopt;
  const Pending& pending = plan[static_cast<std::size_t>(left - results.begin())];
  const Pending::Part& first = pending.parts.front();
  // What was stopped before its turn, somebody stopped who knows.
  if (left->outcome != Outcome::kSkipped) {
    surroundings_.message_box.Show(
        first.tab.dialog, WriteFailureMessage(pending.change, *left, surroundings_.book.labels()));
  }
  for (const Pending::Part& part : pending.parts) part.tab.recording->AcceptAsSeen(*left);
  return first.tab.page;
}

std::optional<std::size_t> SheetCommit::RunAtDesk(Plan plan) {
  const bool is_looked_at = plan.size() > 1 || surroundings_.desk->ReviewsEverything();
  if (is_looked_at && !LookAt(plan)) return PageLeft();
  const Plan whole = plan;
  BeginLog(whole);
  while (!plan.empty()) {
    const Results results = Write(plan, false);
    std::vector<std::string> again = Resolve(plan, results);
    if (again.empty()) again = Tell(whole, plan, results);
    plan = PlanOf(again);
    std::set<std::string> planned;
    for (const Pending& pending : plan) planned.insert(FoldCase(pending.change.dn));
    for (const std::string& key : again) {
      // The other's values stay, and there was nothing else.
      if (!planned.contains(key)) ended_[key].outcome = Outcome::kUnchanged;
    }
    if (plan.empty() && !again.empty() && whole.size() > 1) (void)Tell(whole, {}, {});
  }
  return PageLeft();
}

bool SheetCommit::LookAt(Plan& plan) {
  Review review;
  for (const Pending& pending : plan) {
    surroundings_.errands.Breathe();
    review.changes.push_back({.dn = pending.change.dn,
                              .name = surroundings_.name_of(pending.change.dn),
                              .fields = surroundings_.book.FieldsOf(pending.change)});
  }
  review.ldif_of = [&](std::size_t at) {
    return changes::ToLdif(surroundings_.store.schema(), plan[at].change) + "\n";
  };
  if (!surroundings_.desk->ShowReview(plan.front().parts.front().tab.dialog, review)) return false;
  Plan wanted;
  for (std::size_t at = 0; at < plan.size(); ++at) {
    if (review.changes[at].is_wanted) {
      wanted.push_back(std::move(plan[at]));
      continue;
    }
    for (const Pending::Part& part : plan[at].parts) part.tab.recording->Forget(part.change.dn);
  }
  plan = std::move(wanted);
  return true;
}

std::vector<std::string> SheetCommit::Resolve(const Plan& plan, const Results& results) {
  std::vector<ShownConflict> shown;
  const FieldBook& book = surroundings_.book;
  for (const Result& result : results) {
    for (const changes::Conflict& conflict : result.conflicts) {
      const auto type = surroundings_.store.schema().Find(conflict.attribute);
      shown.push_back({.dn = result.dn,
                       .name = surroundings_.name_of(result.dn),
                       .attribute = conflict.attribute,
                       .field = book.LabelOf(conflict.attribute),
                       .seen = book.TextOf(conflict.attribute, conflict.seen),
                       .there = book.TextOf(conflict.attribute, conflict.there),
                       .wanted = book.TextOf(conflict.attribute, conflict.wanted),
                       .is_list = type && !type->is_single_valued});
    }
  }
  is_left_open_ = false;
  if (shown.empty()) return {};
  IDialog* const owner = plan.front().parts.front().tab.dialog;
  if (!surroundings_.desk->ShowConflicts(owner, shown)) {
    is_left_open_ = true;
    return {};
  }
  std::vector<std::string> decided;
  for (std::size_t at = 0; at < plan.size(); ++at) {
    if (results[at].conflicts.empty()) continue;
    Decide(plan[at], results[at], shown);
    decided.push_back(FoldCase(results[at].dn));
  }
  return decided;
}

void SheetCommit::Decide(const Pending& pending, const Result& result,
                         const std::vector<ShownConflict>& decided) {
  Result mine = result;
  std::erase_if(mine.conflicts, [&](const changes::Conflict& conflict) {
    const auto found = std::ranges::find_if(decided, [&](const ShownConflict& shown) {
      return shown.dn == result.dn && shown.attribute == conflict.attribute;
    });
    return found == decided.end() || found->choice == ShownConflict::Choice::kTheirs;
  });
  for (const Pending::Part& part : pending.parts) {
    for (const changes::Conflict& conflict : result.conflicts) {
      const bool is_mine = std::ranges::any_of(mine.conflicts, [&](const changes::Conflict& other) {
        return other.attribute == conflict.attribute;
      });
      if (is_mine) continue;
      part.tab.recording->Drop(result.dn, conflict.attribute);
      has_kept_theirs_ = true;
    }
    part.tab.recording->AcceptAsSeen(mine);
  }
}

std::vector<std::string> SheetCommit::Tell(const Plan& whole, const Plan& plan,
                                           const Results& results) {
  IDialog* const owner = whole.front().parts.front().tab.dialog;
  if (whole.size() == 1) {
    const bool is_told =
        results.front().IsDone() || is_left_open_ || results.front().outcome == Outcome::kSkipped;
    if (!is_told) {
      surroundings_.desk->ShowFailure(
          owner, FailureOf(surroundings_.name_of(plan.front().change.dn), plan.front().change,
                           results.front(), surroundings_.book));
    }
    return {};
  }
  std::vector<WrittenChange> written;
  std::vector<std::string> left;
  for (const Pending& pending : whole) {
    surroundings_.errands.Breathe();
    const std::string key = FoldCase(pending.change.dn);
    const Result& result = ended_[key];
    if (!result.IsDone()) left.push_back(key);
    written.push_back(
        {.name = surroundings_.name_of(pending.change.dn),
         .result = result,
         .reason = result.IsDone() ? std::string() : ReasonOf(result, surroundings_.book)});
  }
  return surroundings_.desk->ShowResults(owner, written) ? left : std::vector<std::string>();
}

}  // namespace pelora::session
