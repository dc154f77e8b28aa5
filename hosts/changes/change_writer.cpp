// SPDX-License-Identifier: Apache-2.0
#include "hosts/changes/change_writer.h"

#include <algorithm>
#include <array>
#include <utility>

#include "hosts/ldap/as_made.h"
#include "hosts/ldap/ldap_status.h"

namespace pelora::changes {
namespace {

using ldap::StoreStatus;

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

ldap::Entry EntryOf(const Change& change, AttributeValues ValueChange::*values) {
  ldap::Entry entry{.dn = change.dn, .attributes = {}};
  for (const ValueChange& value : change.attributes) {
    entry.attributes.insert_or_assign(value.attribute, value.*values);
  }
  return entry;
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
    if (answer.code == ldap::kLdapTimeout) return NotDone(std::move(change.dn), answer);
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

Result ChangeWriter::FinishOther(const Change& change, IChangeLog::NoteId note,
                                 const StoreStatus& answer) {
  Result result = NotDone(change.dn, answer);
  if (answer.Ok()) {
    result = {.dn = change.dn, .outcome = Outcome::kChanged};
  } else if (change.kind == Change::Kind::kDelete && answer.code == ldap::kLdapNoSuchObject) {
    result = {.dn = change.dn, .outcome = Outcome::kUnchanged};
  } else if (answer.code == ldap::kLdapAssertionFailed) {
    result = {.dn = change.dn, .outcome = Outcome::kRefused, .message = answer.text};
  }
  const bool may_be_done =
      result.outcome == Outcome::kChanged || result.outcome == Outcome::kUnknown;
  if (!may_be_done) Withdraw(note);
  return result;
}

Result ChangeWriter::Rehearse(Change change) {
  DropWhatChangesNothing(store_.schema(), change);
  if (std::optional<Result> obstacle = Obstacle(change)) return std::move(*obstacle);
  if (change.kind == Change::Kind::kAdd) {
    ldap::Entry entry = EntryOf(change, &ValueChange::wanted);
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
  ldap::Entry there;
  StoreStatus status =
      store_.Read(change.dn, is_modify ? NamesOf(change) : std::vector<std::string>(), there);
  if (is_add && status.Ok()) status = {ldap::kLdapAlreadyExists, "the object is there already"};
  const bool is_gone = status.code == ldap::kLdapNoSuchObject;
  if (is_gone && is_add) return std::nullopt;
  if (is_gone && change.kind == Change::Kind::kDelete) return unchanged;
  if (!status.Ok()) return NotRead(change.dn, status);
  if (!is_modify) {
    const StoreStatus kept = CheckKept(store_.schema(), EntryOf(change, &ValueChange::seen), there);
    if (kept.Ok()) return std::nullopt;
    return Result{.dn = change.dn, .outcome = Outcome::kRefused, .message = kept.text};
  }
  Standing standing = StandingOf(store_.schema(), change, there, lists_);
  if (!standing.conflicts.empty()) return Refused(change.dn, std::move(standing.conflicts));
  if (standing.rest.attributes.empty()) return unchanged;
  change = std::move(standing.rest);
  return std::nullopt;
}

StoreStatus ChangeWriter::Send(const Change& change) {
  switch (change.kind) {
    case Change::Kind::kModify:
      return store_.ModifyStrictly(change.dn, GuardedRequest(store_.schema(), change));
    case Change::Kind::kAdd:
      return store_.Add(EntryOf(change, &ValueChange::wanted));
    case Change::Kind::kDelete:
      return store_.Delete(EntryOf(change, &ValueChange::seen));
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
