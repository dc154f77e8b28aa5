// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "hosts/ldap/directory_store.h"

namespace pelora::ldap {

/// Whether an object still has the attributes that it was made with: 122 when one of them has other
/// values, with a text that names it. What it has besides is not looked at.
[[nodiscard]] StoreStatus CheckKept(const Schema& schema, const Entry& made, const Entry& now);

/// Whether it has no others: 122 with the name of one that was set since. Its classes, its names
/// and `naming`, the attribute that names it, are the directory's own doing.
[[nodiscard]] StoreStatus CheckNothingNew(const Entry& made, const Entry& now,
                                          std::string_view naming);

}  // namespace pelora::ldap
