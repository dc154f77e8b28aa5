// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "hosts/ldap/directory_store.h"

namespace pelora::ldap {

/// Makes the embedded directory `path` from LDIF text.
///
/// The text holds entries, no changes: one of class `domainDNS`, which is the directory's base;
/// below it, in `CN=Schema,CN=Configuration`, an `attributeSchema` for each attribute that occurs,
/// with `lDAPDisplayName`, `attributeSyntax`, `oMSyntax`, `isSingleValued` and, if need be,
/// `rangeLower` and `rangeUpper`; and the content, parents before children. An entry's naming
/// attribute and `name` are added where they are not written out.
///
/// The file appears whole or not at all and belongs to the user alone. An existing file is refused
/// (68) and stays as it is. An entry that the schema does not allow, or text that is no LDIF, is
/// named by its name and line in `text`; nothing is left behind.
[[nodiscard]] StoreStatus CreateLdbDirectory(const std::string& path, std::string_view ldif);

}  // namespace pelora::ldap
