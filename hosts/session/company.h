// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <span>
#include <string>

#include "hosts/ldap/directory_store.h"

namespace pelora::session {

/// The company that something belongs to: the nearest organizational unit that is a Pelora company,
/// from the object `dn` upwards, that one included. It is read with `name` and `attributes`. None
/// when there is none, or when the directory does not answer.
[[nodiscard]] std::optional<ldap::Entry> FindCompany(ldap::IDirectoryStore& store, std::string dn,
                                                     std::span<const std::string> attributes = {});

}  // namespace pelora::session
