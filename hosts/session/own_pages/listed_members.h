// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "hosts/ldap/directory_store.h"

namespace pelora::session {

/// Distinguished names of the members of a group, or of the groups that an object is in.
struct ListedMembers {
  std::vector<std::string> names{};
  /// What is to be known of it beside, as sentences; empty: nothing.
  std::string note{};
  ldap::StoreStatus status{};
};

/// Those that a group has itself: who has it for his primary group is not among them.
[[nodiscard]] ListedMembers ReadMembersOf(ldap::IDirectoryStore& store, const std::string& group);

/// Those that have the object themselves: not its primary group, nor those that these are in.
[[nodiscard]] ListedMembers ReadGroupsOf(ldap::IDirectoryStore& store, const std::string& dn);

}  // namespace pelora::session
