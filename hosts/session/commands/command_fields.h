// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string>
#include <vector>

#include "hosts/session/directory_browser.h"
#include "hosts/session/field_book.h"
#include "hosts/session/fields/field_catalogue.h"

namespace pelora::session {

/// A list of the names of users and groups that a command can change.
struct NameListField {
  std::string attribute;
  /// What the tab calls it.
  std::string label;
};

/// What of some objects commands can change: what the tabs of all of them have.
struct CommandFields {
  bool has_addresses = false;
  /// Delegates, and who is warned of quotas.
  std::vector<NameListField> lists{};
  /// What the fields are called.
  FieldBook book{};

  [[nodiscard]] bool IsAny() const { return has_addresses || !lists.empty(); }
  /// What has to be read of the objects for every command.
  [[nodiscard]] std::vector<std::string> Attributes() const;
};

[[nodiscard]] CommandFields CommandFieldsOf(FieldCatalogue& catalogue,
                                            std::span<const DirectoryObject> selection);

/// The objects that can stand in such a list, as an LDAP filter.
[[nodiscard]] std::string UsersAndGroupsFilter();

}  // namespace pelora::session
