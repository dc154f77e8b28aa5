// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <limits>
#include <span>
#include <string>

#include "hosts/session/directory_browser.h"
#include "hosts/session/find/listing_end.h"

namespace pelora::session {

/// One object that a search found.
struct FoundObject {
  DirectoryObject object;
  std::string logon_name;
  std::string mail;
  /// Where it lies, from the domain down: "example.org/Sales"; empty for a domain.
  std::string folder;
};

/// What is searched for.
struct ObjectQuery {
  /// An LDAP filter that they match.
  std::string filter;
  /// What was typed or pasted (`FindText`); empty: nothing.
  std::string text{};
  /// Below which object, itself included; empty: the whole directory.
  std::string base{};
  /// At most so many objects are given.
  std::size_t limit = std::numeric_limits<std::size_t>::max();
};

/// Takes found objects one by one; false ends the search (which is then done, not failed).
using FoundSink = std::function<bool(FoundObject found)>;

/// Searches a directory. Objects of its own machinery are left out; whether those for an advanced
/// view are is the filter's business.
[[nodiscard]] ListingEnd FindObjects(ldap::IDirectoryStore& store, const ObjectQuery& query,
                                     const FoundSink& sink);

/// Searches a directory below several objects, none of which lies below another, in their order.
/// What a list names is missing when it is below none of them.
[[nodiscard]] ListingEnd FindObjectsBelow(ldap::IDirectoryStore& store,
                                          std::span<const std::string> bases, ObjectQuery query,
                                          const FoundSink& sink);

}  // namespace pelora::session
