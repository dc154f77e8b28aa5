// SPDX-License-Identifier: Apache-2.0
#include "hosts/changes/looked_up.h"

#include <utility>
#include <vector>

#include "hosts/changes/guarded_request.h"
#include "hosts/ldap/as_made.h"
#include "hosts/ldap/ldap_status.h"

namespace pelora::changes {
namespace {

using Answer = LookedUp::Answer;
using ldap::StoreStatus;

LookedUp Written() { return {Answer::kWritten, "everything is as wanted"}; }
LookedUp NotWritten() { return {Answer::kNotWritten, "it was not done by then"}; }
LookedUp Otherwise() { return {Answer::kCannotBeTold, "it is neither as it was nor as wanted"}; }

/// What it means that the object could not be read.
LookedUp Unread(const StoreStatus& status) {
  // The client's own failures are negative: no server has said anything.
  return {.text = "it cannot be read: " + status.text, .is_reached = status.code >= 0};
}

class Look {
 public:
  Look(ldap::IDirectoryStore& store, const Change& change) : store_(store), change_(change) {}

  LookedUp OfModification() {
    const StoreStatus read = Read(change_.dn);
    if (!read.Ok()) return Unread(read);
    const Standing standing = StandingOf(store_.schema(), change_, there_);
    if (!standing.conflicts.empty()) return Otherwise();
    if (standing.rest.attributes.empty()) return Written();
    return standing.is_less ? Otherwise() : NotWritten();
  }

  LookedUp OfAddition() {
    const StoreStatus read = Read(change_.dn);
    if (read.code == ldap::kLdapNoSuchObject) return NotWritten();
    if (!read.Ok()) return Unread(read);
    return CheckKept(store_.schema(), WantedIn(change_), there_).Ok() ? Written() : Otherwise();
  }

  /// Something that is to be there, or not to be there, in the end.
  LookedUp OfPresence(bool is_wanted) {
    const StoreStatus read = Read(change_.dn);
    if (!read.Ok() && read.code != ldap::kLdapNoSuchObject) return Unread(read);
    return read.Ok() == is_wanted ? Written() : NotWritten();
  }

  LookedUp OfRenaming() {
    const Entry seen = SeenIn(change_);
    for (const bool is_new : {true, false}) {
      const StoreStatus read = Read(is_new ? change_.new_dn : change_.dn);
      if (!read.Ok() && read.code != ldap::kLdapNoSuchObject) return Unread(read);
      if (!read.Ok() || !CheckSame(store_.schema(), seen, there_).Ok()) continue;
      return is_new ? Written() : NotWritten();
    }
    return Otherwise();
  }

 private:
  using Entry = ldap::Entry;

  StoreStatus Read(const std::string& dn) {
    // Without a single name everything would be read.
    std::vector<std::string> names = {"objectClass"};
    for (const ValueChange& value : change_.attributes) names.push_back(value.attribute);
    return store_.Read(dn, names, there_);
  }

  ldap::IDirectoryStore& store_;
  const Change& change_;
  Entry there_;
};

}  // namespace

LookedUp LookUp(ldap::IDirectoryStore& store, const Change& change) {
  Change readable = change;
  std::erase_if(readable.attributes, &IsForGood);
  // It takes effect whole or not at all: what can be read speaks for the rest.
  if (change.kind == Change::Kind::kModify && readable.attributes.empty()) {
    return {.text = "what was to be written cannot be read"};
  }
  Look look(store, readable);
  switch (change.kind) {
    case Change::Kind::kModify:
      return look.OfModification();
    case Change::Kind::kAdd:
      return look.OfAddition();
    case Change::Kind::kDelete:
    case Change::Kind::kRemove:
      return look.OfPresence(false);
    case Change::Kind::kRename:
      return look.OfRenaming();
    case Change::Kind::kRestore:
      return look.OfPresence(true);
  }
  return Otherwise();
}

}  // namespace pelora::changes
