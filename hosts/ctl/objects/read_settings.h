// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "hosts/ctl/fields/fields.h"
#include "hosts/ctl/workplace.h"

namespace pelora::ctl {

/// One field of an object and what it holds.
struct ShownField {
  const Field* field = nullptr;
  FieldValue value;
};

/// An object with all its settings, as its tabs show them.
struct ShownObject {
  session::DirectoryObject object;
  /// What scripts call its class.
  std::string word;
  std::vector<ShownField> fields;
};

/// The attributes that are read of objects whose settings are shown or changed.
[[nodiscard]] std::vector<std::string> SettingsAttributes();

/// All settings of the object of an entry.
[[nodiscard]] ShownObject SettingsOf(const ldap::Entry& entry, const ldap::Schema& schema,
                                     FieldCatalogue& catalogue);
[[nodiscard]] inline ShownObject SettingsOf(const ldap::Entry& entry, Workplace& workplace) {
  return SettingsOf(entry, workplace.store().schema(), workplace.catalogue);
}

/// What could not be shown, and why.
using RefusedTarget = std::function<void(const Target& target, const std::string& problem)>;

/// Reads the entries of objects, in their order; what cannot be shown goes to `refuse`.
void ReadEntries(Workplace& workplace, std::span<const Target> targets,
                 const std::function<void(const Target& target, const ldap::Entry& entry)>& take,
                 const RefusedTarget& refuse);

}  // namespace pelora::ctl
