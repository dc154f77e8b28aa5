// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string>
#include <vector>

#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/network/ldap_api.h"

namespace pelora::ldap {

/// Changes of attributes in the form that the LDAP library sends. Names and values stay where they
/// are: what it was made from outlives it.
class LdapModifications {
 public:
  explicit LdapModifications(std::span<const Modification> modifications);
  /// Every attribute of a new entry.
  explicit LdapModifications(const AttributeMap& attributes);
  LdapModifications(const LdapModifications&) = delete;
  LdapModifications& operator=(const LdapModifications&) = delete;

  /// Ends with a null, as the library wants it.
  [[nodiscard]] LDAPMod** get() { return list_.data(); }

 private:
  struct Change {
    std::vector<berval> values;
    std::vector<berval*> value_list;
    LDAPMod change{};
  };

  void Append(int operation, const std::string& attribute, const AttributeValues& values);
  void Finish();

  std::vector<Change> changes_;
  std::vector<LDAPMod*> list_;
};

}  // namespace pelora::ldap
