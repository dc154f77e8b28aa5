// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "hosts/ldap/directory_store.h"

namespace pelora::session {

/// One value of an object's attribute, as people read it.
struct AttributeRow {
  std::string attribute;
  std::string value;
};

/// Everything that was read of an object: a row for each value, the attributes in the order of the
/// alphabet and the values in that of the directory.
///
/// Texts, names and numbers stand as the directory has them. `objectGUID` and security identifiers
/// have their usual form; other bytes, and texts that are none, are written in hexadecimal, the
/// beginning of long ones with how many there are.
[[nodiscard]] std::vector<AttributeRow> AttributeRowsOf(const ldap::Schema& schema,
                                                        const ldap::Entry& entry);

/// The rows as lines, an attribute and its value with a tab between.
[[nodiscard]] std::string TextOf(const std::vector<AttributeRow>& rows);

}  // namespace pelora::session
