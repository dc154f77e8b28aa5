// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/sheet_commit.h"

#include <algorithm>
#include <utility>

#include "hosts/changes/change_runner.h"
#include "hosts/changes/ldif_changes.h"
#include "hosts/ldap/case_fold.h"
#include "hosts/session/let_go.h"
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

SheetCommit::Plan SheetCommit::MakePlan(const Keys* only) const {
  Plan plan;
  // Where the first change of an object stands.
  std::map<std::string, std::size_t> places;
  for (const CommittedTab& tab : tabs_) {
    for (Change& change : tab.recording->TakeRecorded()) {
      surroundings_.errands.Breathe();
      std::string key = FoldCase(change.dn);
      if (only != nullptr && !only->contains(key)) continue;
      const auto [place, is_first] = places.emplace(std::move(key), plan.size());
      const bool joins = !is_first && plan[place->second].Takes(change);
      Pending& pending = joins ? plan[place->second] : plan.emplace_back();
      pending.Take(tab, std::move(change));
    }
  }
  LetGoOf(places, surroundings_.errands);
  return plan;
}

SheetCommit::Whole SheetCommit::WholeOf(const Plan& plan) const {
  Whole whole{.dns = {}, .owner = plan.empty() ? nullptr : plan.front().parts.front().tab.dialog};
  for (const Pending& pending : plan) {
    surroundings_.errands.Breathe();
    whole.dns.push_back(pending.change.dn);
  }
  return whole;
}

std::optional<std::size_t> SheetCommit::PageLeft() const {
  const auto left = std::ranges::find_if(
      tabs_, [](const CommittedTab& tab) { return tab.recording->HasRecorded(); });
  if (left == tabs_.end()) return std::nullopt;
  return left->page;
}

bool SheetCommit::IsDone(const std::string& dn) const {
  const auto ended = ended_.find(FoldCase(dn));
  return ended != ended_.end() && ended->second.IsDone();
}

std::optional<std::size_t> SheetCommit::Run() {
  Plan plan = MakePlan();
  if (plan.empty()) return std::nullopt;
  const auto left = surroundings_.desk == nullptr ? RunAtOnce(plan) : RunAtDesk(plan);
  LetGoOf(plan, surroundings_.errands);
  return left;
}

void SheetCommit::LetGo() { LetGoOf(ended_, surroundings_.errands); }

SheetCommit::Results SheetCommit::Write(const Plan& plan, bool stops_at_first) {
  Results results(plan.size());
  const auto write = [&](IErrand& errand) {
    if (const std::optional<Words> words = std::exchange(words_, std::nullopt)) {
      log_ = surroundings_.history->Begin(words->objects, words->fields);
    }
    // Made and let go beside the window.
    std::vector<Change> all;
    for (const Pending& pending : plan) all.push_back(pending.change);
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
      plan.size() == 1 ? "Writing the changes of " + surroundings_.name_of(plan[0].change.dn)
                       : "Writing the changes of " + std::to_string(plan.size()) + " objects";
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

void SheetCommit::KeepAs(const Plan& plan) {
  if (surroundings_.history == nullptr || plan.empty()) return;
  Words& words = words_.emplace();
  for (const Pending& pending : plan) {
    surroundings_.errands.Breathe();
    words.objects.push_back(surroundings_.name_of(pending.change.dn));
    for (const changes::ValueChange& value : pending.change.attributes) {
      std::string field = surroundings_.book.LabelOf(value.attribute);
      const bool is_named = std::ranges::find(words.fields, field) != words.fields.end();
      if (!is_named) words.fields.push_back(std::move(field));
    }
  }
}

std::optional<std::size_t> SheetCommit::RunAtOnce(const Plan& plan) {
  KeepAs(plan);
  const Results results = Write(plan, true);
  const auto left = std::ranges::find_if(results, [](const Result& r) { return !r.IsDone(); });
  if (left == results.end()) return std::nullopt;
  const Pending& pending = plan[static_cast<std::size_t>(left - results.begin())];
  const Pending::Part& first = pending.parts.front();
  // What was stopped before its turn, somebody stopped who knows.
  if (left->outcome != Outcome::kSkipped) {
    surroundings_.message_box.Show(
        first.tab.dialog, WriteFailureMessage(pending.change, *left, surroundings_.book.labels(),
                                              PlaceOf(surroundings_.store)));
  }
  for (const Pending::Part& part : pending.parts) part.tab.recording->AcceptAsSeen(*left);
  return first.tab.page;
}

std::optional<std::size_t> SheetCommit::RunAtDesk(Plan& plan) {
  const bool is_looked_at = plan.size() > 1 || surroundings_.desk->ReviewsEverything();
  if (is_looked_at && !LookAt(plan)) return PageLeft();
  Whole whole = WholeOf(plan);
  KeepAs(plan);
  while (!plan.empty()) {
    Results results = Write(plan, false);
    Keys again = Resolve(plan, results);
    if (again.empty()) again = Tell(whole, plan, results);
    LetGoOf(results, surroundings_.errands);
    LetGoOf(plan, surroundings_.errands);
    if (again.empty()) break;
    plan = MakePlan(&again);
    SettleDecided(again, plan);
    LetGoOf(again, surroundings_.errands);
    if (plan.empty() && whole.dns.size() > 1) (void)TellAll(whole);
  }
  LetGoOf(whole.dns, surroundings_.errands);
  return PageLeft();
}

void SheetCommit::SettleDecided(const Keys& keys, const Plan& plan) {
  Keys planned;
  for (const Pending& pending : plan) {
    surroundings_.errands.Breathe();
    planned.insert(FoldCase(pending.change.dn));
  }
  for (const std::string& key : keys) {
    surroundings_.errands.Breathe();
    // The other's values stay, and there was nothing else.
    if (!planned.contains(key)) ended_[key].outcome = Outcome::kUnchanged;
  }
  LetGoOf(planned, surroundings_.errands);
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
  const bool is_to_be_written =
      surroundings_.desk->ShowReview(plan.front().parts.front().tab.dialog, review);
  if (is_to_be_written) TakeOut(plan, review);
  LetGoOf(review.changes, surroundings_.errands);
  return is_to_be_written;
}

void SheetCommit::TakeOut(Plan& plan, const Review& review) {
  Plan wanted;
  for (std::size_t at = 0; at < plan.size(); ++at) {
    surroundings_.errands.Breathe();
    if (review.changes[at].is_wanted) {
      wanted.push_back(std::move(plan[at]));
      continue;
    }
    for (const Pending::Part& part : plan[at].parts) part.tab.recording->LeaveOut(part.change.dn);
  }
  std::swap(plan, wanted);
  LetGoOf(wanted, surroundings_.errands);
}

std::vector<ShownConflict> SheetCommit::ConflictsOf(const Results& results) const {
  std::vector<ShownConflict> shown;
  const FieldBook& book = surroundings_.book;
  for (const Result& result : results) {
    surroundings_.errands.Breathe();
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
  return shown;
}

SheetCommit::Keys SheetCommit::Resolve(const Plan& plan, const Results& results) {
  std::vector<ShownConflict> shown = ConflictsOf(results);
  is_left_open_ = false;
  if (shown.empty()) return {};
  IDialog* const owner = plan.front().parts.front().tab.dialog;
  Keys decided;
  if (surroundings_.desk->ShowConflicts(owner, shown)) {
    std::span<const ShownConflict> left = shown;
    for (std::size_t at = 0; at < plan.size(); ++at) {
      surroundings_.errands.Breathe();
      const std::size_t count = results[at].conflicts.size();
      if (count == 0) continue;
      Decide(plan[at], results[at], left.first(count));
      left = left.subspan(count);
      decided.insert(FoldCase(results[at].dn));
    }
  } else {
    is_left_open_ = true;
  }
  LetGoOf(shown, surroundings_.errands);
  return decided;
}

void SheetCommit::Decide(const Pending& pending, const Result& result,
                         std::span<const ShownConflict> decided) {
  Result mine = result;
  mine.conflicts.clear();
  for (std::size_t at = 0; at < decided.size(); ++at) {
    const changes::Conflict& conflict = result.conflicts[at];
    if (decided[at].choice != ShownConflict::Choice::kTheirs) {
      mine.conflicts.push_back(conflict);
      continue;
    }
    for (const Pending::Part& part : pending.parts) {
      part.tab.recording->Drop(result.dn, conflict.attribute);
    }
    has_kept_theirs_ = true;
  }
  for (const Pending::Part& part : pending.parts) part.tab.recording->AcceptAsSeen(mine);
}

SheetCommit::Keys SheetCommit::Tell(const Whole& whole, const Plan& plan, const Results& results) {
  if (whole.dns.size() > 1) return TellAll(whole);
  const bool is_told =
      results.front().IsDone() || is_left_open_ || results.front().outcome == Outcome::kSkipped;
  if (!is_told) {
    surroundings_.desk->ShowFailure(
        whole.owner, FailureOf(surroundings_.name_of(plan.front().change.dn), plan.front().change,
                               results.front(), surroundings_.book, PlaceOf(surroundings_.store)));
  }
  return {};
}

SheetCommit::Keys SheetCommit::TellAll(const Whole& whole) {
  std::vector<WrittenChange> written;
  Keys left;
  for (const std::string& dn : whole.dns) {
    surroundings_.errands.Breathe();
    const std::string key = FoldCase(dn);
    const Result& result = ended_[key];
    if (!result.IsDone()) left.insert(key);
    written.push_back({.name = surroundings_.name_of(dn),
                       .result = result,
                       .reason = result.IsDone() ? std::string()
                                                 : ReasonOf(result, surroundings_.book,
                                                            PlaceOf(surroundings_.store))});
  }
  const bool is_tried_again = surroundings_.desk->ShowResults(whole.owner, written);
  LetGoOf(written, surroundings_.errands);
  if (!is_tried_again) LetGoOf(left, surroundings_.errands);
  return left;
}

}  // namespace pelora::session
