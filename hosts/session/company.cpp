// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/company.h"

#include <algorithm>
#include <vector>

#include "directory/attribute_catalogue.h"
#include "hosts/ldap/attribute_value.h"
#include "hosts/ldap/entry_values.h"
#include "hosts/session/distinguished_name.h"

namespace pelora::session {
namespace {

constexpr std::string_view kAccount = CatalogueEntry("peloraAccount").name;

bool IsCompany(const ldap::Entry& entry) {
  const ldap::AttributeValues& classes = ldap::ValuesOf(entry, "objectClass");
  const bool is_unit = std::ranges::find(classes, "organizationalUnit") != classes.end();
  return is_unit && ldap::ParseInteger(ldap::FirstValue(entry, kAccount)).value_or(0) != 0;
}

}  // namespace

std::optional<ldap::Entry> FindCompany(ldap::IDirectoryStore& store, std::string dn,
                                       std::span<const std::string> attributes) {
  std::vector<std::string> asked = {"objectClass", "name", std::string(kAccount)};
  asked.insert(asked.end(), attributes.begin(), attributes.end());
  for (; !dn.empty(); dn = std::string(ParentName(dn))) {
    ldap::Entry entry;
    if (!store.Read(dn, asked, entry).Ok()) return std::nullopt;
    if (IsCompany(entry)) return entry;
  }
  return std::nullopt;
}

}  // namespace pelora::session
