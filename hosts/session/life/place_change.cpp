// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/life/place_change.h"

#include <utility>

#include "hosts/ldap/entry_values.h"
#include "hosts/ldap/object_name.h"
#include "hosts/ldap/remove_bottom_up.h"

namespace pelora::session {
namespace {

constexpr const char* kNumber = "objectGUID";

changes::Change ChangeOf(changes::Change::Kind kind, const ldap::Entry& read) {
  return {.kind = kind, .dn = read.dn, .attributes = IdentityOf(read)};
}

}  // namespace

const std::vector<std::string>& IdentityAttributes() {
  static const std::vector<std::string> kAttributes = {kNumber, "objectClass", "sAMAccountName"};
  return kAttributes;
}

std::vector<changes::ValueChange> IdentityOf(const ldap::Entry& read) {
  std::vector<changes::ValueChange> identity;
  for (const std::string& name : IdentityAttributes()) {
    const ldap::AttributeValues& values = ldap::ValuesOf(read, name);
    if (values.empty()) continue;
    identity.push_back({.attribute = name, .seen = values});
    // It says everything.
    if (name == kNumber) break;
  }
  return identity;
}

changes::Change RenamingOf(const ldap::Entry& read, std::string_view name) {
  changes::Change change = ChangeOf(changes::Change::Kind::kRename, read);
  change.new_dn = ldap::RenamedName(read.dn, name);
  return change;
}

changes::Change MovingOf(const ldap::Entry& read, std::string_view container) {
  changes::Change change = ChangeOf(changes::Change::Kind::kRename, read);
  change.new_dn = ldap::MovedName(read.dn, container);
  return change;
}

changes::Change RemovalOf(const ldap::Entry& read, const std::vector<ldap::Entry>& below,
                          bool is_kept) {
  changes::Change change = ChangeOf(changes::Change::Kind::kRemove, read);
  change.with_all_below = !below.empty();
  change.is_kept = is_kept;
  if (!is_kept) return change;
  change.below = below;
  ldap::SortBottomUp(change.below);
  for (ldap::Entry& entry : change.below) {
    std::erase_if(entry.attributes,
                  [](const auto& attribute) { return attribute.first != kNumber; });
  }
  return change;
}

}  // namespace pelora::session
