// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "hosts/ldap/directory_store.h"
#include "hosts/session/check/check_fields.h"
#include "hosts/session/check/check_rules.h"
#include "hosts/session/check/finding.h"

namespace pelora::session {

/// What is to be looked at.
struct CheckRequest {
  /// Objects from here on down. Empty: the whole directory.
  std::string base{};
  /// None: all of `CheckRules`.
  std::vector<const CheckRule*> rules{};
};

/// Looks at every object with tabs, and hands over what is wrong, ordered by rule and then by the
/// object's name, once everything has been looked at.
///
/// The objects are read once, whatever the number of rules, in one search for the attributes that
/// the rules look at. Beside it, the servers of the whole directory are searched for when a rule
/// asks for them, and the objects that others name and that did not pass by are looked up many at a
/// time. What is kept of an object is its name, and the names and addresses that it holds.
///
/// Nothing is written. A failure of the directory ends the check, and nothing is handed over.
ldap::StoreStatus RunCheck(ldap::IDirectoryStore& store, const CheckRequest& request,
                           const CheckFields& fields, const FindingSink& sink);

}  // namespace pelora::session
