// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/ldap/directory_store.h"
#include "hosts/session/directory_browser.h"
#include "hosts/session/typed/judgement.h"

namespace pelora::session {

/// Another object that has an e-mail address, as its default one or among its others and in
/// whatever case; none when nobody has it but the objects `except`, by distinguished name, and none
/// when the directory does not answer.
[[nodiscard]] std::optional<DirectoryObject> FindAddressOwner(ldap::IDirectoryStore& store,
                                                              std::string_view address,
                                                              std::span<const std::string> except);

/// What there is to say of an address that another object has.
[[nodiscard]] Judgement JudgeOwner(const DirectoryObject& owner);

/// Who has each of many addresses, asked for many at a time: all objects that have it, by the
/// address as `ldap::FoldCase` makes it. What the directory does not answer nobody has.
using AddressOwners = std::map<std::string, std::vector<DirectoryObject>>;
[[nodiscard]] AddressOwners FindAddressOwners(ldap::IDirectoryStore& store,
                                              std::span<const std::string> addresses);

}  // namespace pelora::session
