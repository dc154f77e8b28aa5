// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/noted_additions.h"

#include <array>
#include <memory>
#include <string>

#include "hosts/ldap/entry_values.h"
#include "hosts/ldap/ldap_status.h"

namespace pelora::session {
namespace {

/// What the list of changes says in place of fields.
constexpr const char* kCreated = "created";

/// What a new object will be called: its directory has not given it its name yet.
std::string NameOfNew(const ldap::Entry& entry) {
  for (const char* const naming : {"cn", "ou"}) {
    if (std::string name = ldap::FirstValue(entry, naming); !name.empty()) return name;
  }
  return entry.dn;
}

}  // namespace

ldap::StoreStatus NotedAdditions::Add(const ldap::Entry& entry) {
  const std::unique_ptr<changes::IChangeLog> log = history_.Begin({NameOfNew(entry)}, {kCreated});
  changes::IChangeLog::NoteId note = 0;
  const std::array<changes::Change, 1> addition = {changes::AdditionOf(entry)};
  const bool is_noted = log != nullptr && log->Note(addition, note).Ok();
  ldap::StoreStatus status = ForwardingStore::Add(entry);
  // What was sent and not answered may have been done.
  const bool may_be_done = status.Ok() || status.code == ldap::kLdapTimeout;
  if (is_noted && !may_be_done) log->Withdraw(note);
  return status;
}

}  // namespace pelora::session
