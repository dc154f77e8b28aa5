// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/ldb_connection.h"

namespace pelora::ldap {

/// Writes out what a directory derives from a new entry's name: the naming attribute, spelled as
/// the schema spells it, and `name`. The entry's name is well-formed.
///
/// An entry without a class is an object class violation (65). A naming attribute that the schema
/// does not know, or one that is given another value than the name has, is a naming violation (64).
[[nodiscard]] StoreStatus CompleteNewEntry(const LdbConnection& connection, const Schema& schema,
                                           Entry& entry);

/// Puts the classes that a new entry's classes are derived from in front of them, the most general
/// first, as a directory does that is told the last one only. Classes that are not known here are
/// taken to be derived from `top` alone.
void CompleteClasses(Entry& entry);

}  // namespace pelora::ldap
