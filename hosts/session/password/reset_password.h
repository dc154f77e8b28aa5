// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "hosts/ldap/directory_store.h"
#include "hosts/session/secret.h"
#include "platform/dialog.h"

namespace pelora::session {

/// Whether a user was given another password, and whether he is to change it.
enum class PasswordGiven : std::uint8_t { kNo, kYes, kYesToBeChanged };

/// Asks the person in front of a dialog for another password of a user and gives it to him, at
/// once: nothing of it is recorded, and it cannot be taken back.
using GivePassword = std::function<PasswordGiven(IDialog* owner, const std::string& dn)>;

/// Why no password can be given at all, as a sentence; empty when one can.
[[nodiscard]] std::string WhyNoPassword(const ldap::IDirectoryStore& store, std::size_t users);

/// Gives a user a password, in one request that goes to no journal, list or report. Nothing is sent
/// over a connection that is not sealed.
[[nodiscard]] ldap::StoreStatus ResetPassword(ldap::IDirectoryStore& store, const std::string& dn,
                                              const Secret& password, bool must_change);

/// What a failure of `ResetPassword` is told as.
[[nodiscard]] std::string WhyNotReset(const ldap::StoreStatus& status);

}  // namespace pelora::session
