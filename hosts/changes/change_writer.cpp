// SPDX-License-Identifier: Apache-2.0
#include "hosts/changes/change_writer.h"

#include <algorithm>
#include <array>
#include <utility>

#include "hosts/changes/looked_up.h"
#include "hosts/changes/whole_list.h"
#include "hosts/ldap/as_made.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/name_key.h"
#include "hosts/ldap/object_name.h"

namespace pelora::changes {
namespace {

using ldap::StoreStatus;
using Extent = ldap::IDirectoryStore::Extent;

/// How often a change is sent at most, when others keep doing parts of it meanwhile.
constexpr int kAttempts = 8;

/// Codes with which directories refuse a request that takes something for granted that is not so.
constexpr auto kRefusals = std::to_array<int>({
    ldap::kLdapNoSuchAttribute,
    ldap::kLdapConstraintViolation,
    ldap::kLdapValueExists,
});

bool IsRefusal(const StoreStatus& answer) {
  return std::ranges::find(kRefusals, answer.code) != kRefusals.end();
}

bool GoesAway(const Change& change) {
  return change.kind == Change::Kind::kDelete || change.kind == Change::Kind::kRemove;
}

/// Whether an answer leaves it open that somebody else has given the object the name already.
bool MayBeThereAlready(const StoreStatus& answer) {
  return answer.code == ldap::kLdapNoSuchObject || answer.code == ldap::kLdapAlreadyExists ||
         answer.code == ldap::kLdapAssertionFailed;
}

std::vector<std::string> NamesOf(const Change& change) {
  std::vector<std::string> names;
  for (const ValueChange& value : change.attributes) names.push_back(value.attribute);
  return names;
}

}  // namespace

ChangeWriter::ChangeWriter(ldap::IDirectoryStore& store, IChangeLog* log, Lists lists)
    : store_(store), log_(log), lists_(lists) {}

Result ChangeWriter::Write(Change change) {
  DropWhatChangesNothing(store_.schema(), change);
  if (change.kind == Change::Kind::kModify && change.attributes.empty()) {
    return {.dn = std::move(change.dn), .outcome = Outcome::kUnchanged};
  }
  if (NeedsLook(change)) {
    if (std::optional<Result> obstacle = Obstacle(change)) return std::move(*obstacle);
  }
  IChangeLog::NoteId note = 0;
  if (StoreStatus noted = Note(change, note); !noted.Ok()) return NotDone(change.dn, noted);
  StoreStatus answer = Send(change);
  return Finish(std::move(change), note, std::move(answer));
}

Result ChangeWriter::Finish(Change change, IChangeLog::NoteId note, StoreStatus answer) {
  if (change.kind != Change::Kind::kModify) return FinishOther(change, note, answer);
  for (int attempt = 1;; ++attempt) {
    if (answer.Ok()) return {.dn = std::move(change.dn), .outcome = Outcome::kChanged};
    // It may have been done: what is noted of it stays.
    if (answer.code == ldap::kLdapTimeout) return Unknown(change, answer);
    Withdraw(note);
    if (!IsRefusal(answer)) return NotDone(std::move(change.dn), answer);
    ldap::Entry there;
    if (StoreStatus read = store_.Read(change.dn, NamesOf(change), there); !read.Ok()) {
      return NotRead(std::move(change.dn), read);
    }
    Standing standing = StandingOf(store_.schema(), change, there, lists_);
    if (!standing.conflicts.empty()) {
      return Refused(std::move(change.dn), std::move(standing.conflicts));
    }
    if (standing.rest.attributes.empty()) {
      return {.dn = std::move(change.dn), .outcome = Outcome::kUnchanged};
    }
    // Nothing stands in its way. Unless somebody changed something and changed it back, the
    // directory has another reason, and will say so again.
    const bool is_worth_it = standing.is_less || attempt == 1;
    if (!is_worth_it || attempt == kAttempts) return NotDone(std::move(change.dn), answer);
    change = std::move(standing.rest);
    if (StoreStatus noted = Note(change, note); !noted.Ok()) return NotDone(change.dn, noted);
    answer = Send(change);
  }
}

Result ChangeWriter::Unknown(const Change& change, const StoreStatus& answer) {
  Result result = NotDone(change.dn, answer);
  if (!may_look_up_) return result;
  const LookedUp looked_up = LookUp(store_, change);
  // Where nobody can be reached, each further look would cost as long a wait again.
  may_look_up_ = looked_up.is_reached;
  result.message += "; looked at since, " + looked_up.text;
  return result;
}

Result ChangeWriter::FinishOther(const Change& change, IChangeLog::NoteId note,
                                 const StoreStatus& answer) {
  Result result = NotDone(change.dn, answer);
  if (answer.Ok()) {
    result = {.dn = change.dn, .outcome = Outcome::kChanged};
  } else if (result.outcome == Outcome::kUnknown) {
    result = Unknown(change, answer);
  } else if (GoesAway(change) && answer.code == ldap::kLdapNoSuchObject) {
    result = {.dn = change.dn, .outcome = Outcome::kUnchanged};
  } else if (IsBackAlready(change, answer)) {
    result = {.dn = change.dn, .outcome = Outcome::kUnchanged};
  } else if (change.kind == Change::Kind::kRename) {
    result = StandingOfRename(change, answer);
  } else if (answer.code == ldap::kLdapAssertionFailed) {
    result = {.dn = change.dn, .outcome = Outcome::kRefused, .message = answer.text};
  }
  const bool may_be_done =
      result.outcome == Outcome::kChanged || result.outcome == Outcome::kUnknown;
  if (!may_be_done) Withdraw(note);
  return result;
}

bool ChangeWriter::IsBackAlready(const Change& change, const StoreStatus& answer) {
  const bool may_be_back = change.kind == Change::Kind::kAdd && lists_ == Lists::kUntouched &&
                           answer.code == ldap::kLdapAlreadyExists;
  if (!may_be_back) return false;
  ldap::Entry there;
  return store_.Read(change.dn, NamesOf(change), there).Ok() &&
         CheckKept(store_.schema(), WantedIn(change), there).Ok();
}

bool ChangeWriter::HasNameAlready(const Change& change, const StoreStatus& answer) {
  if (!MayBeThereAlready(answer)) return false;
  if (ldap::NameKey(change.dn) == ldap::NameKey(change.new_dn)) return false;
  ldap::Entry there;
  const StoreStatus status = store_.Read(change.new_dn, NamesOf(change), there);
  if (!status.Ok() || !CheckSame(store_.schema(), SeenIn(change), there).Ok()) return false;
  // Of a directory that gives its objects no numbers, two may look the same.
  return change.Find("objectGUID") != nullptr || answer.code == ldap::kLdapNoSuchObject;
}

Result ChangeWriter::StandingOfRename(const Change& change, const StoreStatus& answer) {
  if (HasNameAlready(change, answer)) {
    return {.dn = change.dn, .outcome = Outcome::kUnchanged};
  }
  if (answer.code == ldap::kLdapAssertionFailed) {
    return {.dn = change.dn, .outcome = Outcome::kRefused, .message = answer.text};
  }
  // Samba has no better word for a container that is gone.
  if (answer.code == ldap::kLdapOther) {
    const std::string container(ldap::ContainerOf(change.new_dn));
    ldap::Entry there;
    const StoreStatus status = store_.Read(container, NamesOf(change), there);
    if (status.code == ldap::kLdapNoSuchObject) {
      return NotDone(change.dn, {status.code, "there is no container " + container});
    }
  }
  return NotDone(change.dn, answer);
}

Result ChangeWriter::Rehearse(Change change) {
  DropWhatChangesNothing(store_.schema(), change);
  if (std::optional<Result> obstacle = Obstacle(change)) return std::move(*obstacle);
  if (change.kind == Change::Kind::kAdd) {
    ldap::Entry entry = WantedIn(change);
    store_.CompleteNew(entry);
    change = AdditionOf(entry);
  }
  IChangeLog::NoteId note = 0;
  if (StoreStatus noted = Note(change, note); !noted.Ok()) return NotDone(change.dn, noted);
  return {.dn = std::move(change.dn), .outcome = Outcome::kChanged};
}

std::optional<Result> ChangeWriter::Obstacle(Change& change) {
  const bool is_modify = change.kind == Change::Kind::kModify;
  const bool is_add = change.kind == Change::Kind::kAdd;
  const Result unchanged{.dn = change.dn, .outcome = Outcome::kUnchanged};
  if (is_modify && change.attributes.empty()) return unchanged;
  if (IsBackAlready(change, {ldap::kLdapAlreadyExists, {}})) return unchanged;
  if (is_add || change.kind == Change::Kind::kRestore) return NameTaken(change.dn, change.dn);
  ldap::Entry there;
  StoreStatus status =
      store_.Read(change.dn, is_modify ? NamesOf(change) : std::vector<std::string>(), there);
  if (status.code == ldap::kLdapNoSuchObject && GoesAway(change)) return unchanged;
  if (!status.Ok()) return NotRead(change.dn, status);
  if (!is_modify) {
    const bool is_made = change.kind == Change::Kind::kDelete;
    status = is_made ? CheckKept(store_.schema(), SeenIn(change), there)
                     : CheckSame(store_.schema(), SeenIn(change), there);
    if (status.Ok()) {
      const bool takes_a_name = change.kind == Change::Kind::kRename &&
                                ldap::NameKey(change.dn) != ldap::NameKey(change.new_dn);
      return takes_a_name ? NameTaken(change.dn, change.new_dn) : std::nullopt;
    }
    return Result{.dn = change.dn, .outcome = Outcome::kRefused, .message = status.text};
  }
  return Judge(change, there);
}

bool ChangeWriter::NeedsLook(const Change& change) const {
  return lists_ == Lists::kUntouched && HasWholeList(change);
}

std::optional<Result> ChangeWriter::Judge(Change& change, const ldap::Entry& there) const {
  Standing standing = StandingOf(store_.schema(), change, there, lists_);
  if (!standing.conflicts.empty()) return Refused(change.dn, std::move(standing.conflicts));
  if (standing.rest.attributes.empty()) {
    return Result{.dn = change.dn, .outcome = Outcome::kUnchanged};
  }
  change = std::move(standing.rest);
  return std::nullopt;
}

std::optional<Result> ChangeWriter::NameTaken(const std::string& dn, const std::string& wanted) {
  ldap::Entry there;
  StoreStatus status = store_.Read(wanted, std::vector<std::string>{"objectClass"}, there);
  if (status.code == ldap::kLdapNoSuchObject) return std::nullopt;
  if (status.Ok()) status = {ldap::kLdapAlreadyExists, "the object is there already"};
  return NotRead(dn, status);
}

StoreStatus ChangeWriter::Send(const Change& change) {
  switch (change.kind) {
    case Change::Kind::kModify:
      return store_.ModifyStrictly(change.dn, GuardedRequest(store_.schema(), change));
    case Change::Kind::kAdd:
      return store_.Add(WantedIn(change));
    case Change::Kind::kDelete:
      return store_.Delete(SeenIn(change));
    case Change::Kind::kRename:
      return store_.Rename(SeenIn(change), change.new_dn);
    case Change::Kind::kRemove:
      return store_.Remove(SeenIn(change),
                           change.with_all_below ? Extent::kWithAllBelow : Extent::kAlone);
    case Change::Kind::kRestore:
      return store_.Restore(SeenIn(change));
  }
  return {ldap::kLdapParamError, "no such kind of change"};
}

StoreStatus ChangeWriter::Note(const Change& change, IChangeLog::NoteId& note) {
  return log_ == nullptr ? StoreStatus{} : log_->Note({&change, 1}, note);
}

void ChangeWriter::Withdraw(IChangeLog::NoteId note) {
  if (log_ != nullptr) log_->Withdraw(note);
}

}  // namespace pelora::changes
