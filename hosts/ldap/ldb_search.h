// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <span>
#include <string>

#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/ldb_record.h"

struct ldb_context;
struct ldb_dn;
struct ldb_parse_tree;

namespace pelora::ldap {

/// What is searched for; everything is well-formed and outlives the search.
struct LdbSearch {
  ldb_dn* base = nullptr;
  SearchScope scope = SearchScope::kBase;
  const std::string& filter;
  std::span<const std::string> attributes;
};

/// Whether the library has every matching rule that a filter names. For one that it has not, it
/// would find nothing and say so in the words that it has for damage.
[[nodiscard]] bool KnowsMatchingRules(const struct ldb_parse_tree& filter);

/// Searches a database and hands over each entry as it is found, so that no more than one is in the
/// library's own memory. `take` ends the search by false, which is no failure, and asks nothing of
/// the same database. The library's code is returned; what `take` throws comes through.
[[nodiscard]] int SearchLdb(ldb_context* context, const LdbSearch& search,
                            const std::function<bool(Entry entry)>& take);

/// Reads the record of one name, with some attributes, or all when none is named; null when it does
/// not match the filter. The library's code is returned.
[[nodiscard]] int ReadLdb(ldb_context* context, ldb_dn* name, struct ldb_parse_tree* filter,
                          std::span<const std::string> attributes, LdbRecord& record);

}  // namespace pelora::ldap
