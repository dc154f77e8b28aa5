// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <stop_token>
#include <string>
#include <vector>

#include "hosts/ldap/directory_store.h"

namespace pelora::session {

/// The objects of names that somebody gave.
struct FoundNames {
  /// Distinguished names, each once.
  std::vector<std::string> names{};
  /// What was given and is nobody, or several.
  std::vector<std::string> not_found{};
  std::vector<std::string> ambiguous{};
  /// How many were not looked for: there were too many.
  std::size_t left_out = 0;
  /// Domains in which nobody could be looked for, in words; what was found elsewhere is whole.
  std::vector<std::string> unreached{};
  /// A failure: some may not have been found for it.
  ldap::StoreStatus status{};
};

/// Finds the objects of a list of names, logon names, addresses and distinguished names, among
/// those that an LDAP filter lets through. `stop` ends what is asked of others than `store`.
using NameFinder =
    std::function<FoundNames(ldap::IDirectoryStore& store, const std::string& text,
                             const std::string& filter, const std::stop_token& stop)>;

}  // namespace pelora::session
