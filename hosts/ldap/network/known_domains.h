// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "hosts/ldap/directory_store.h"

namespace pelora::ldap {

/// A domain besides a directory's own.
struct KnownDomain {
  /// In the domain name system: `north.example.org`.
  std::string name;
  /// Its distinguished name.
  std::string base;
  /// It is of the same forest, whose global catalog holds a part of its objects. Otherwise it is
  /// trusted.
  bool is_of_forest = false;

  friend bool operator==(const KnownDomain&, const KnownDomain&) = default;
};

/// A directory's own domain and those around it.
struct KnownDomains {
  /// Distinguished name of the directory's own domain, and its name in the domain name system.
  std::string own_base;
  std::string own_name;
  /// The name of the forest: that of its first domain.
  std::string forest_name;
  /// The server that has told all this, when it has the forest's global catalog.
  std::string catalog_host;
  /// The forest's first, as the directory has them, then those that it trusts.
  std::vector<KnownDomain> others;

  /// The one that an object lies in; null for one of the own domain, and of none that is known.
  [[nodiscard]] const KnownDomain* DomainOf(const std::string& dn) const;
};

/// Reads from a directory which domains its forest has, and which ones it trusts to tell who
/// somebody is. It says so over its sealed connection: nothing else (no referral, no name server)
/// makes a domain one of these.
[[nodiscard]] StoreStatus ReadKnownDomains(IDirectoryStore& store, KnownDomains& domains);

}  // namespace pelora::ldap
