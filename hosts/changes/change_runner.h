// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <stop_token>
#include <string>
#include <vector>

#include "hosts/changes/change.h"
#include "hosts/changes/change_log.h"
#include "hosts/changes/guarded_request.h"
#include "hosts/changes/result.h"
#include "hosts/ldap/directory_store.h"

namespace pelora::changes {

/// What was read of one of the objects that a run is about.
struct ReadObject {
  /// Its place among the run's names.
  std::size_t at = 0;
  /// How reading it went. Success, and an entry without a name, for a name that is empty.
  ldap::StoreStatus status{};
  ldap::Entry entry{};
};

/// What an object's preparation came to: a change to be written, or what is to be told instead. A
/// change of nothing ends as unchanged.
struct Prepared {
  Change change{};
  std::optional<Result> instead{};
};

/// Works out the change of one object. It may ask the store that the run uses, and must not write.
/// What it throws ends the run.
using Prepare = std::function<Prepared(ReadObject object)>;

/// Takes the result of each object, in the objects' order, as soon as it and those before are
/// there.
using ResultSink = std::function<void(std::size_t at, const Result& result)>;

struct RunOptions {
  /// What is read of each object before its change is prepared. None: all of it.
  std::vector<std::string> attributes{};
  /// The object at a place, when as much has been read of it already: it is not read again. Null
  /// where it has not; may be none. It is asked once for each object that is worked on.
  std::function<const ldap::Entry*(std::size_t at)> at_hand{};
  /// One object at a time, and the end at the first that is not done.
  bool stops_at_first = false;
  /// Nothing is sent: changes are noted in the log, and end as changed. (Those that were not
  /// prepared from what the run read are looked at first, and end as `ChangeWriter::Write` would
  /// have it.)
  bool is_rehearsal = false;
  /// What it means that somebody else has done a part of a list's change.
  Lists lists = Lists::kMerged;
  /// Ends the run after what is under way; on whatever thread.
  std::stop_token stop{};
  /// Is told of every change before it is sent. May be null.
  IChangeLog* log = nullptr;
};

/// How many objects ended in which way.
class Tally {
 public:
  void Count(Outcome outcome) { ++counts_[static_cast<std::size_t>(outcome)]; }
  [[nodiscard]] std::size_t operator[](Outcome outcome) const {
    return counts_[static_cast<std::size_t>(outcome)];
  }
  /// Whether every object is as wanted.
  [[nodiscard]] bool IsAllDone() const;
  /// "3 changed, 0 unchanged, 1 refused, 0 failed, 0 unknown, 0 skipped".
  [[nodiscard]] std::string Text() const;

 private:
  std::array<std::size_t, kOutcomeCount> counts_{};
};

/// Works on many objects: reads them together, has the change of each prepared, writes the changes
/// guarded, many of them under way at a time where the store can, and tells what became of each.
///
/// `names` are the objects' distinguished names; an empty one is not read, and its preparation says
/// why there is none. Memory grows with the names, not with what is read or sent. An object that
/// could not be read goes to its preparation with the reason.
///
/// Told to stop, it ends after what is under way. When the connection is lost, what was sent and
/// not answered is unknown, the rest goes over a new connection, and nothing is sent twice; when
/// none can be had, or a change could not be noted in the log, that object has failed. Whatever is
/// left then is skipped.
///
/// Runs on the thread that calls it, which is the store's.
Tally RunChanges(ldap::IDirectoryStore& store, std::span<const std::string> names,
                 const Prepare& prepare, const RunOptions& options, const ResultSink& sink);

/// The same for changes that are known already, in their order: what a file of changes holds, what
/// a sheet has recorded.
Tally RunChanges(ldap::IDirectoryStore& store, std::span<const Change> changes,
                 const RunOptions& options, const ResultSink& sink);

}  // namespace pelora::changes
