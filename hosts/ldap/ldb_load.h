// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "hosts/ldap/ldb_connection.h"
#include "hosts/ldap/schema.h"

namespace pelora::ldap {

/// Reads what a store of a directory file has to know before it is of use: the root entry and the
/// schema. Called within a hold for reading. -1 for a file that is no directory, or one that asks
/// for modules, with a text that names it; what else goes wrong says what the library says.
[[nodiscard]] StoreStatus LoadLdbDirectory(const LdbConnection& connection, const std::string& path,
                                           Entry& root, Schema& schema);

}  // namespace pelora::ldap
