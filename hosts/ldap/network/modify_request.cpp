// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/modify_request.h"

namespace pelora::ldap {
namespace {

using Operation = Modification::Operation;

int NumberOf(Operation operation) {
  switch (operation) {
    case Operation::kAdd:
      return LDAP_MOD_ADD;
    case Operation::kDelete:
      return LDAP_MOD_DELETE;
    case Operation::kReplace:
      return LDAP_MOD_REPLACE;
  }
  return LDAP_MOD_REPLACE;
}

}  // namespace

LdapModifications::LdapModifications(std::span<const Modification> modifications) {
  changes_.reserve(modifications.size());
  for (const Modification& change : modifications) {
    Append(NumberOf(change.operation), change.attribute, change.values);
  }
  Finish();
}

LdapModifications::LdapModifications(const AttributeMap& attributes) {
  changes_.reserve(attributes.size());
  for (const auto& [name, values] : attributes) Append(LDAP_MOD_ADD, name, values);
  Finish();
}

void LdapModifications::Append(int operation, const std::string& attribute,
                               const AttributeValues& values) {
  Change& change = changes_.emplace_back();
  change.values.reserve(values.size());
  for (const std::string& value : values) {
    change.values.push_back(BorrowedValue(value.data(), value.size()));
  }
  for (berval& value : change.values) change.value_list.push_back(&value);
  change.value_list.push_back(nullptr);
  change.change.mod_op = operation | LDAP_MOD_BVALUES;
  change.change.mod_type = const_cast<char*>(attribute.c_str());
  // A replacement by nothing has no list at all.
  change.change.mod_bvalues = values.empty() ? nullptr : change.value_list.data();
}

void LdapModifications::Finish() {
  for (Change& change : changes_) list_.push_back(&change.change);
  list_.push_back(nullptr);
}

}  // namespace pelora::ldap
