// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/schema.h"

namespace pelora::ldap {

/// The record that makes a database one of our directories: it names the base and where the
/// configuration and the schema lie.
inline constexpr const char* kRootRecord = "@ROOTDSE";
/// Where a file names modules that are to be loaded into whatever program opens it.
inline constexpr const char* kModulesRecord = "@MODULES";

/// Takes an `attributeSchema` entry into the schema: 80 with a text that names the attribute when
/// something is missing in it or is not understood.
[[nodiscard]] StoreStatus AddToSchema(const Entry& entry, Schema& schema);

/// The records that tell libldb how values compare and which attributes to index, and the root
/// record of a directory whose base is `base`.
[[nodiscard]] Entry MakeAttributesRecord(const Schema& schema);
[[nodiscard]] Entry MakeIndexRecord();
[[nodiscard]] Entry MakeOptionsRecord();
[[nodiscard]] Entry MakeRootRecord(const std::string& base);

}  // namespace pelora::ldap
