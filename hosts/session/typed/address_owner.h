// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "hosts/ldap/directory_store.h"
#include "hosts/session/directory_browser.h"

namespace pelora::session {

/// Another object that has an e-mail address, as its default one or among its others and in
/// whatever case; none when nobody has it but the objects `except`, by distinguished name, and none
/// when the directory does not answer.
[[nodiscard]] std::optional<DirectoryObject> FindAddressOwner(ldap::IDirectoryStore& store,
                                                              std::string_view address,
                                                              std::span<const std::string> except);

}  // namespace pelora::session
