// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/new_entry.h"

#include <utility>

#include "hosts/ldap/case_fold.h"
#include "hosts/ldap/ldap_status.h"

namespace pelora::ldap {

StoreStatus CompleteNewEntry(const LdbConnection& connection, const Schema& schema, Entry& entry) {
  const LdbConnection::NamingAttribute naming = connection.NamingAttributeOf(entry.dn);
  if (!schema.Find(naming.attribute)) {
    return {kLdapNamingViolation, "no such naming attribute: " + naming.attribute};
  }
  AttributeMap spelled;
  for (auto& [name, values] : entry.attributes) {
    spelled.emplace(schema.SpellingOf(name), std::move(values));
  }
  entry.attributes = std::move(spelled);
  if (entry.attributes["objectClass"].empty()) {
    return {kLdapObjectClassViolation, "the entry has no class"};
  }
  for (const std::string& name : {schema.SpellingOf(naming.attribute), std::string("name")}) {
    AttributeValues& values = entry.attributes[name];
    if (values.empty()) values = {naming.value};
    if (values.size() != 1 || FoldCase(values.front()) != FoldCase(naming.value)) {
      return {kLdapNamingViolation, "attribute '" + name + "' differs from the entry's name"};
    }
  }
  return {};
}

}  // namespace pelora::ldap
