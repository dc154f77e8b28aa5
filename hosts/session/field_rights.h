// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "hosts/ldap/directory_store.h"
#include "platform/field_rows.h"

namespace pelora::session {

/// Which fields of some objects the user may change, as the directory says with each object. In a
/// directory that says nothing of rights (a file) everything may be changed; another one says
/// nothing of an object of which the user may change nothing. The directory has the last word in
/// any case.
class FieldRights {
 public:
  /// What is to be read of the objects, beside what their fields need.
  static constexpr const char* kAttribute = "allowedAttributesEffective";

  explicit FieldRights(const ldap::Schema& schema)
      : says_nothing_for_none_(schema.Find(kAttribute).has_value()) {}

  /// Takes down what was read of an object.
  void Learn(const ldap::Entry& entry);

  /// Why a field may not be edited, as a sentence; empty when it may. A field that writes several
  /// attributes needs the right to all of them, and a selection the right to all of its objects.
  [[nodiscard]] std::string WhyReadOnly(const FieldRow& row) const;

 private:
  using Allowed = std::set<std::string, ldap::AttributeNameLess>;

  /// What the directory said, and of how many objects: thousands may have the same rights.
  std::map<Allowed, std::size_t> said_;
  std::size_t count_ = 0;
  bool says_nothing_for_none_;
};

/// The controls with which a field is edited.
[[nodiscard]] std::vector<ControlId> ControlsOf(const FieldRow& row);

}  // namespace pelora::session
