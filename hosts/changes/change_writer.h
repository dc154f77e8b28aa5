// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "hosts/changes/change.h"
#include "hosts/changes/change_log.h"
#include "hosts/changes/guarded_request.h"
#include "hosts/changes/result.h"
#include "hosts/ldap/directory_store.h"

namespace pelora::changes {

/// Writes changes, each guarded: what is sent says what was seen, and the directory refuses it when
/// that is not there any more. Between a look and a write there is no gap, whoever else writes: but
/// for what somebody puts into a list while a change of it is taken back, which stays in it then.
/// (A server that compares texts without case takes a text in other letters for the one that was
/// seen.)
///
/// A refused change is read anew, and only then it is told what became of it:
/// - everything is as wanted, by whoever: unchanged;
/// - an attribute of one value is neither as seen nor as wanted: refused, with the conflicts;
/// - of a list, what somebody else did already is taken off the change and the rest sent again, as
///   long as nothing of it is in conflict (`Lists::kMerged`), or is a conflict (`kUntouched`, which
///   looks before it sends where all of a list is known);
/// - everything is as it was seen: failed; the directory had another reason, and its words say so.
///
/// A change that was sent and not answered is unknown and never sent again. It is looked up once,
/// by what was to be written, where the directory can be reached: the message says what was found,
/// and the outcome stays, for another server may not know of it yet, and a slow one may still do
/// it. A deleted object, a missing right and the like are failures with the directory's status and
/// words.
class ChangeWriter {
 public:
  /// `store` and `log`, which may be null, outlive the writer. What is about to be sent is noted in
  /// the log first; what cannot be noted is not sent.
  explicit ChangeWriter(ldap::IDirectoryStore& store, IChangeLog* log = nullptr,
                        Lists lists = Lists::kMerged);
  ChangeWriter(const ChangeWriter&) = delete;
  ChangeWriter& operator=(const ChangeWriter&) = delete;

  /// Writes one change, whatever its kind. Nothing is sent for one that changes nothing.
  [[nodiscard]] Result Write(Change change);

  /// Looks at the object and tells what `Write` would; nothing is sent, and the log is told of what
  /// would be.
  [[nodiscard]] Result Rehearse(Change change);

  /// Whether `Write` looks at the object before anything is sent: nobody is to have touched a list
  /// of which all is known, which no request can ask for. Who sends by `Send` calls `Judge` first.
  [[nodiscard]] bool NeedsLook(const Change& change) const;
  /// What keeps a modification from being made of an object that is like this; takes off it what is
  /// so already.
  [[nodiscard]] std::optional<Result> Judge(Change& change, const ldap::Entry& there) const;

  /// Sends a change that changes something and has been noted.
  [[nodiscard]] ldap::StoreStatus Send(const Change& change);
  /// What became of a change that was noted in the log as `note` and sent, and that the store
  /// answered so; may read, and send the rest of it again.
  [[nodiscard]] Result Finish(Change change, IChangeLog::NoteId note, ldap::StoreStatus answer);

 private:
  /// For additions and deletions, of which nothing is left to be read.
  [[nodiscard]] Result FinishOther(const Change& change, IChangeLog::NoteId note,
                                   const ldap::StoreStatus& answer);
  /// For a change that was sent and not answered.
  [[nodiscard]] Result Unknown(const Change& change, const ldap::StoreStatus& answer);
  /// Whether an object that was to be made again is there as it was.
  [[nodiscard]] bool IsBackAlready(const Change& change, const ldap::StoreStatus& answer);
  /// Whether somebody else has given an object its new name.
  [[nodiscard]] bool HasNameAlready(const Change& change, const ldap::StoreStatus& answer);
  /// For a new name that could not be given.
  [[nodiscard]] Result StandingOfRename(const Change& change, const ldap::StoreStatus& answer);
  /// What there is to say when an object of the name `wanted` is there.
  [[nodiscard]] std::optional<Result> NameTaken(const std::string& dn, const std::string& wanted);
  /// What keeps a change from being made as it is; takes off it what is so already.
  [[nodiscard]] std::optional<Result> Obstacle(Change& change);
  [[nodiscard]] ldap::StoreStatus Note(const Change& change, IChangeLog::NoteId& note);
  void Withdraw(IChangeLog::NoteId note);

  ldap::IDirectoryStore& store_;
  IChangeLog* log_;
  Lists lists_;
  /// Until nobody could be reached for a look.
  bool may_look_up_ = true;
};

}  // namespace pelora::changes
