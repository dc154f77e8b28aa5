// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace pelora::ldap {

/// The bytes of an `objectGUID` as they are written for people; empty when there are not 16.
[[nodiscard]] std::string GuidBytesText(std::string_view guid);

/// The name that a domain gives an object of the name `dn` and the `objectGUID` (its bytes) when it
/// deletes it: `CN=Ada\0ADEL:number,CN=Deleted Objects,DC=...`.
[[nodiscard]] std::string DeletedName(std::string_view dn, std::string_view guid);

/// The `objectGUID` of such a name; nothing for another one.
[[nodiscard]] std::optional<std::string> GuidOfDeletedName(std::string_view name);

}  // namespace pelora::ldap
