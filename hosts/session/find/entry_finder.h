// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "hosts/ldap/directory_store.h"
#include "hosts/session/find/find_text.h"
#include "hosts/session/find/listing_end.h"

namespace pelora::session {

/// What entries are looked for.
struct EntryQuery {
  /// Where they lie: right below this object or, with `below`, at it and anywhere below. Empty: the
  /// whole directory.
  std::string base{};
  bool below = true;
  /// What was typed or pasted (`FindText`); empty: nothing.
  std::string text{};
  /// An LDAP filter that they match; empty: none.
  std::string filter{};
  /// Entries that the directory says are for an advanced view only, too.
  bool advanced = false;
  /// What is read of them.
  std::vector<std::string> attributes{};
};

/// The one way in which lists and choosers find entries by what somebody typed. Entries of the
/// directory's own machinery are left out, and what several items of a list name is given once.
///
/// Nothing is written. The store outlives the finder.
class EntryFinder final {
 public:
  EntryFinder(ldap::IDirectoryStore& store, EntryQuery query);

  /// Looks whether the query is one, and where to look: before the first search. A filter that is
  /// none is a failure that says where its fault is.
  [[nodiscard]] ldap::StoreStatus Begin();
  /// Where is looked, from then on.
  [[nodiscard]] const std::string& base() const { return base_; }

  /// Whether not everything is meant.
  [[nodiscard]] bool IsNarrowed() const { return !text_.IsEmpty() || !query_.filter.empty(); }

  /// Takes an entry that is found; false ends the search (which is then done, not failed).
  using Take = std::function<bool(const ldap::Entry& entry)>;
  [[nodiscard]] ldap::StoreStatus Find(const Take& take);

  /// How it ended that `Find` gave a status: what of a list was not found is known only when
  /// everything was looked at. `has_more`: it was ended because there are more than wanted.
  [[nodiscard]] ListingEnd EndBy(const ldap::StoreStatus& status, bool has_more) const;

 private:
  [[nodiscard]] std::string Narrowed(const std::string& filter) const;
  ldap::StoreStatus SearchBy(const std::string& filter, const Take& take);
  ldap::StoreStatus SearchNames(const Take& take);
  ldap::StoreStatus ReadNamed(const Take& take);
  bool Pass(const ldap::Entry& entry, const Take& take);
  [[nodiscard]] bool Marks(const ldap::Entry& entry);
  bool Once(const ldap::Entry& entry, const Take& take);
  [[nodiscard]] std::vector<std::string> Attributes() const;
  [[nodiscard]] std::vector<std::string> NotFound() const;

  ldap::IDirectoryStore& store_;
  const EntryQuery query_;
  const FindText text_;
  std::string base_;
  /// How names of the directory's own machinery end, folded.
  std::string machinery_;
  /// The items that a folded name is asked for by.
  std::map<std::string, std::vector<std::size_t>, std::less<>> items_of_name_;
  std::vector<bool> is_found_;
  std::set<std::string> seen_;
  /// Who takes the entries wants no more.
  bool is_ended_ = false;
};

}  // namespace pelora::session
