// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "hosts/session/check/check_fields.h"
#include "hosts/session/find/list_columns.h"
#include "hosts/session/find/listing_end.h"

namespace pelora::session {

/// Which objects are to be listed.
struct Listing {
  /// Where they lie: right below this object or, with `below`, at it and anywhere below. Empty: the
  /// whole directory.
  std::string base{};
  bool below = true;
  /// What was typed or pasted (`FindText`); empty: nothing.
  std::string text{};
  /// An LDAP filter that they match; empty: none.
  std::string filter{};
  /// A rule of the check that finds something wrong with them, each thing a row; empty: none.
  std::string rule{};
  /// Objects that the directory says are for an advanced view only, too.
  bool advanced = false;
  /// At most so many are given.
  std::size_t limit = 250'000;

  [[nodiscard]] bool operator==(const Listing&) const = default;
};

/// Takes listed objects one by one; false ends the listing (which is then done, not failed).
using ListedSink = std::function<bool(ListedObject listed)>;

/// Lists objects as the directory gives them. Objects of its own machinery are left out.
///
/// A filter that is none ends it with a failure that says where its fault is. What a rule finds is
/// handed over when everything has been looked at. Nothing is written.
[[nodiscard]] ListingEnd ListObjects(ldap::IDirectoryStore& store, const Listing& listing,
                                     const ListColumns& columns, const CheckFields& check_fields,
                                     const ListedSink& sink);

}  // namespace pelora::session
