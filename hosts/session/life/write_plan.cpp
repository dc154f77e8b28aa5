// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/life/write_plan.h"

#include <memory>
#include <string>
#include <utility>

#include "hosts/changes/change_runner.h"
#include "hosts/ldap/name_key.h"
#include "hosts/ldap/object_name.h"

namespace pelora::session {
namespace {

using changes::Change;

/// What is changed, as the list of changes calls it.
std::string FieldOf(const Change& change) {
  if (change.kind == Change::Kind::kRemove) return "Deletion";
  const bool is_moved = ldap::NameKey(ldap::ContainerOf(change.dn)) !=
                        ldap::NameKey(ldap::ContainerOf(change.new_dn));
  return is_moved ? "Folder" : "Name";
}

std::unique_ptr<changes::IChangeLog> BeginLog(const PlacePlan& plan, ChangeHistory* history) {
  if (history == nullptr || plan.changes.empty()) return nullptr;
  const Change& first = plan.changes.front();
  return CanBeTakenBack(first) ? history->Begin(plan.names, {FieldOf(first)})
                               : history->BeginFinal(plan.names, {FieldOf(first)});
}

}  // namespace

std::vector<changes::Result> WritePlan(ldap::IDirectoryStore& store, const PlacePlan& plan,
                                       ChangeHistory* history, IErrands& errands) {
  const std::vector<Change>& all = plan.changes;
  std::vector<changes::Result> results(all.size());
  const std::unique_ptr<changes::IChangeLog> log = BeginLog(plan, history);
  errands.Run("Writing to the directory...", [&](IErrand& errand) {
    store.StopOn(errand.give_up());
    const changes::RunOptions options{.stop = errand.stop(), .log = log.get()};
    changes::RunChanges(store, all, options, [&](std::size_t at, const changes::Result& result) {
      results[at] = result;
      errand.Advance(at + 1, all.size() > 1 ? all.size() : 0);
    });
    store.StopOn({});
  });
  return results;
}

void KeepWhatIsLeft(const std::vector<changes::Result>& results, PlacePlan& plan) {
  PlacePlan left = plan;
  left.changes.clear();
  left.names.clear();
  for (std::size_t at = 0; at < results.size(); ++at) {
    if (results[at].IsDone()) continue;
    left.changes.push_back(plan.changes[at]);
    left.names.push_back(plan.names[at]);
  }
  plan = std::move(left);
}

}  // namespace pelora::session
