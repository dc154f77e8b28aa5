// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/schema.h"

namespace pelora::ldap {

/// What a value of distinguished-name syntax that is to be removed is sent as. A server gives the
/// name of a deleted object as `CN=Name\0ADEL:identifier,...`, and finds it neither by that name
/// nor among an attribute's values; by `<GUID=identifier>` it does (measured on Samba AD). Any
/// other name is sent as it is.
[[nodiscard]] std::string NameForRemoval(std::string_view dn);

/// The modifications with such names in the values that are removed; nothing when they remove no
/// names at all: what they hold, a password perhaps, is not copied then.
[[nodiscard]] std::optional<std::vector<Modification>> WithNamesForRemoval(
    const Schema& schema, std::span<const Modification> modifications);

}  // namespace pelora::ldap
