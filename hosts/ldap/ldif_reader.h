// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/ldb_connection.h"

namespace pelora::ldap {

/// An entry of an LDIF text and the line, counted from 1, on which it begins.
struct LdifEntry {
  Entry entry;
  std::size_t line = 0;
};

/// Reads all entries of an LDIF text through libldb's reader. Changes other than additions, names
/// that are none and anything that is no LDIF are refused (80) with the line; `entries` is empty
/// then.
[[nodiscard]] StoreStatus ReadLdif(const LdbConnection& connection, std::string_view text,
                                   std::vector<LdifEntry>& entries);

}  // namespace pelora::ldap
