// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "hosts/ldap/store_opener.h"

namespace pelora::ldap {

/// Where objects may be looked for: the directory's own domain, or what lies around it.
struct SearchPlace {
  /// A domain's name in the domain name system; empty: all domains of the forest.
  std::string domain;
  /// Below which objects; none of them lies below another.
  std::vector<std::string> bases;
  /// Opens a store for searching there, and for nothing else: it may hold a part of each object
  /// only.
  StoreOpener open;
};

/// Finds the places of a directory, its own domain first. A store of it is asked, on the store's
/// thread. A directory of one domain that trusts no other has one place.
using PlaceFinder =
    std::function<StoreStatus(IDirectoryStore& store, std::vector<SearchPlace>& places)>;

}  // namespace pelora::ldap
