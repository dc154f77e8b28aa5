// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>

#include "hosts/ldap/directory_store.h"
#include "hosts/session/secret.h"

namespace pelora::session {

/// What a domain asks of its users' passwords, as far as it can be told beforehand. Which passwords
/// somebody had before and what he is called is looked at by the directory alone.
struct PasswordRules {
  /// So many characters at least.
  std::size_t least = 0;
  /// Letters of both kinds, digits and other signs: three of these four.
  bool is_mixed = false;
  /// Rules of his own hold for this user, in place of the domain's: they are the directory's
  /// business, and nothing is known of them here.
  bool are_his_own = false;
};

/// Reads the rules that hold for a user. What cannot be read asks for nothing: the directory has
/// the last word in any case.
[[nodiscard]] PasswordRules ReadPasswordRules(ldap::IDirectoryStore& store, const std::string& dn);

/// The rules as sentences; empty when nothing is asked for.
[[nodiscard]] std::string TextOf(const PasswordRules& rules);

/// Why a password does not fit, as a sentence; empty when the directory may take it.
[[nodiscard]] std::string WhyNotFit(const PasswordRules& rules, const Secret& password);

}  // namespace pelora::session
