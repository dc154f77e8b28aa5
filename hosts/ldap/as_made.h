// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "hosts/ldap/directory_store.h"

namespace pelora::ldap {

/// Whether an object still has the attributes that it was made with: 122 when one of them has other
/// values, with a text that names it. What it has besides is not looked at.
[[nodiscard]] StoreStatus CheckKept(const Schema& schema, const Entry& made, const Entry& now);

/// Whether it has no others: 122 with the name of one that was set since. Its classes, its names
/// and `naming`, the attribute that names it, are the directory's own doing.
[[nodiscard]] StoreStatus CheckNothingNew(const Entry& made, const Entry& now,
                                          std::string_view naming);

/// Whether an object is the one that was seen: 122 when it has not each of `seen`'s attributes just
/// so.
[[nodiscard]] StoreStatus CheckSame(const Schema& schema, const Entry& seen, const Entry& now);

/// The names of an entry's attributes.
[[nodiscard]] std::vector<std::string> AttributeNames(const Entry& entry);

}  // namespace pelora::ldap
