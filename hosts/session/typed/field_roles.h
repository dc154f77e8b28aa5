// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

#include "directory/attribute_catalogue.h"
#include "platform/field_rows.h"

namespace pelora::session {

// What a few fields are for, by the attribute that gives them their value.

/// A search query, and below which object it searches.
inline constexpr std::string_view kQueryField = CatalogueEntry("peloraFilter").name;
inline constexpr std::string_view kQueryBaseField = CatalogueEntry("peloraBase").name;
/// Whether limits of the object's own hold.
inline constexpr std::string_view kOwnQuotaField = CatalogueEntry("peloraQuotaOverride").name;
/// Only users have it: they are whom a company gives its default quota.
inline constexpr std::string_view kUsersServerField = CatalogueEntry("peloraUserServer").name;

/// Whether a field holds e-mail addresses.
[[nodiscard]] inline bool HoldsAddresses(const FieldRow& row) {
  return row.attributes.front() == CatalogueEntry("mail").name ||
         row.attributes.front() == CatalogueEntry("otherMailbox").name;
}

/// Whether the texts of a field's list are names of servers.
[[nodiscard]] inline bool HoldsServers(const FieldRow& row) {
  return row.attributes.front() == CatalogueEntry("peloraUserArchiveServers").name;
}

}  // namespace pelora::session
