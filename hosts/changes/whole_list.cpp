// SPDX-License-Identifier: Apache-2.0
#include "hosts/changes/whole_list.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

#include "hosts/ldap/entry_values.h"
#include "hosts/ldap/value_equality.h"

namespace pelora::changes {
namespace {

using Keys = std::set<std::string>;

Keys KeysOf(ldap::Syntax syntax, const AttributeValues& values) {
  Keys keys;
  for (const std::string& value : values) keys.insert(ldap::ComparisonKey(syntax, value));
  return keys;
}

}  // namespace

void CompleteList(ldap::Syntax syntax, const AttributeValues& there, ValueChange& value) {
  const AttributeValues gone = Without(syntax, value.seen, value.wanted);
  const Keys taken_out = KeysOf(syntax, gone);
  const AttributeValues put_in = Without(syntax, value.wanted, value.seen);
  AttributeValues wanted = there;
  std::erase_if(wanted, [&](const std::string& held) {
    return taken_out.contains(ldap::ComparisonKey(syntax, held));
  });
  const Keys left = KeysOf(syntax, wanted);
  for (const std::string& added : put_in) {
    if (!left.contains(ldap::ComparisonKey(syntax, added))) wanted.push_back(added);
  }
  const Keys held = KeysOf(syntax, there);
  value.seen = there;
  std::ranges::copy_if(gone, std::back_inserter(value.seen), [&](const std::string& missing) {
    return !held.contains(ldap::ComparisonKey(syntax, missing));
  });
  value.wanted = std::move(wanted);
  value.is_whole = true;
}

void CompleteLists(const ldap::Schema& schema, const ldap::Entry& there, Change& change) {
  for (ValueChange& value : change.attributes) {
    if (!value.is_list || value.is_whole) continue;
    CompleteList(SyntaxOf(schema, value.attribute), ldap::ValuesOf(there, value.attribute), value);
  }
}

ListStanding StandingOfWhole(ldap::Syntax syntax, const ValueChange& value,
                             const AttributeValues& there) {
  if (AreSameValues(syntax, there, value.wanted)) return ListStanding::kAsWanted;
  const Keys now = KeysOf(syntax, there);
  if (now == KeysOf(syntax, value.seen)) return ListStanding::kAsSeen;
  return now == KeysOf(syntax, value.wanted) ? ListStanding::kAsWanted : ListStanding::kTouched;
}

bool HasWholeList(const Change& change) {
  return change.kind == Change::Kind::kModify &&
         std::ranges::any_of(change.attributes, [](const ValueChange& value) {
           return value.is_list && value.is_whole;
         });
}

}  // namespace pelora::changes
