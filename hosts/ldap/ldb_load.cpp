// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/ldb_load.h"

#include <vector>

#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/ldb_file_check.h"
#include "hosts/ldap/ldb_schema.h"

namespace pelora::ldap {
namespace {

/// Since the file was looked through it may have got what it may not have.
StoreStatus CheckModules(const LdbConnection& connection, const std::string& path) {
  Entry modules;
  StoreStatus status = connection.Read(kModulesRecord, {}, modules);
  if (status.Ok()) return RefuseModules(path);
  return status.code == kLdapNoSuchObject ? StoreStatus{} : status;
}

}  // namespace

StoreStatus LoadLdbDirectory(const LdbConnection& connection, const std::string& path, Entry& root,
                             Schema& schema) {
  StoreStatus status = CheckModules(connection, path);
  if (status.Ok()) status = connection.Read(kRootRecord, {}, root);
  if (status.code == kLdapNoSuchObject ||
      (status.Ok() && !root.attributes.contains("schemaNamingContext"))) {
    return {kLdapServerDown,
            "cannot open the directory '" + path + "': the file is a database of another program"};
  }
  if (!status.Ok()) return status;
  root.dn.clear();
  root.attributes.erase("distinguishedName");

  // The library itself supplies it, whether the schema tells of it or not.
  schema.Add("distinguishedName", {.syntax = Syntax::kDistinguishedName, .is_single_valued = true});
  std::vector<Entry> definitions;
  status = connection.Search({.base = root.attributes["schemaNamingContext"].front(),
                              .scope = SearchScope::kOneLevel,
                              .filter = "(objectClass=attributeSchema)",
                              .attributes = {}},
                             definitions);
  for (const Entry& definition : definitions) {
    if (status.Ok()) status = AddToSchema(definition, schema);
  }
  return status;
}

}  // namespace pelora::ldap
