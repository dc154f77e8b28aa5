// SPDX-License-Identifier: Apache-2.0
#include "hosts/changes/guarded_request.h"

#include <iterator>
#include <utility>

#include "hosts/changes/whole_list.h"
#include "hosts/ldap/entry_values.h"

namespace pelora::changes {
namespace {

using Operation = ldap::Modification::Operation;

/// What is left to be done of a list's change: less than it was when somebody else did a part of
/// it.
ValueChange RestOfList(ldap::Syntax syntax, const ValueChange& value,
                       const AttributeValues& there) {
  const AttributeValues taken_out = Without(syntax, value.seen, value.wanted);
  const AttributeValues put_in = Without(syntax, value.wanted, value.seen);
  const AttributeValues gone = Without(syntax, taken_out, there);
  return {.attribute = value.attribute,
          .is_list = true,
          .seen = Without(syntax, taken_out, gone),
          .wanted = Without(syntax, put_in, there)};
}

/// The same with all that the list holds now, where that is known of the change.
ValueChange InWhole(ldap::Syntax syntax, ValueChange rest, const AttributeValues& there) {
  AttributeValues wanted = Without(syntax, there, rest.seen);
  std::ranges::move(rest.wanted, std::back_inserter(wanted));
  rest.seen = there;
  rest.wanted = std::move(wanted);
  rest.is_whole = true;
  return rest;
}

/// How many values a list's change takes out and puts in.
std::size_t SizeOf(ldap::Syntax syntax, const ValueChange& value) {
  return Without(syntax, value.seen, value.wanted).size() +
         Without(syntax, value.wanted, value.seen).size();
}

void StandList(ldap::Syntax syntax, const ValueChange& value, const AttributeValues& there,
               Lists lists, Standing& standing) {
  ValueChange rest = RestOfList(syntax, value, there);
  const std::size_t left = rest.seen.size() + rest.wanted.size();
  const bool is_less = left < SizeOf(syntax, value);
  if (is_less && left > 0 && lists == Lists::kUntouched) {
    standing.conflicts.push_back({value.attribute, value.seen, value.wanted, there});
    return;
  }
  standing.is_less = standing.is_less || is_less;
  if (left == 0) return;
  if (value.is_whole) rest = InWhole(syntax, std::move(rest), there);
  standing.rest.attributes.push_back(std::move(rest));
}

/// For a list of which all is known, and that nobody is to have touched.
void StandWholeList(ldap::Syntax syntax, const ValueChange& value, const AttributeValues& there,
                    Standing& standing) {
  switch (StandingOfWhole(syntax, value, there)) {
    case ListStanding::kAsWanted:
      standing.is_less = true;
      return;
    case ListStanding::kAsSeen:
      standing.rest.attributes.push_back(value);
      // A directory may want values spelled as it holds them.
      CompleteList(syntax, there, standing.rest.attributes.back());
      return;
    case ListStanding::kTouched:
      standing.conflicts.push_back({value.attribute, value.seen, value.wanted, there});
  }
}

}  // namespace

std::vector<ldap::Modification> GuardedRequest(const ldap::Schema& schema, const Change& change) {
  std::vector<ldap::Modification> request;
  for (const ValueChange& value : change.attributes) {
    const ldap::Syntax syntax = SyntaxOf(schema, value.attribute);
    AttributeValues taken_out = Without(syntax, value.seen, value.wanted);
    AttributeValues put_in = Without(syntax, value.wanted, value.seen);
    if (!taken_out.empty()) {
      request.push_back({Operation::kDelete, value.attribute, std::move(taken_out)});
    }
    if (!put_in.empty()) request.push_back({Operation::kAdd, value.attribute, std::move(put_in)});
  }
  return request;
}

Standing StandingOf(const ldap::Schema& schema, const Change& change, const ldap::Entry& there,
                    Lists lists) {
  Standing standing{.conflicts = {},
                    .rest = {.kind = change.kind, .dn = change.dn, .attributes = {}}};
  for (const ValueChange& value : change.attributes) {
    const ldap::Syntax syntax = SyntaxOf(schema, value.attribute);
    const AttributeValues& now = ldap::ValuesOf(there, value.attribute);
    if (value.is_list && value.is_whole && lists == Lists::kUntouched) {
      StandWholeList(syntax, value, now, standing);
    } else if (value.is_list) {
      StandList(syntax, value, now, lists, standing);
    } else if (AreSameValues(syntax, now, value.wanted)) {
      standing.is_less = true;
    } else if (AreSameValues(syntax, now, value.seen)) {
      standing.rest.attributes.push_back(value);
    } else {
      standing.conflicts.push_back({value.attribute, value.seen, value.wanted, now});
    }
  }
  return standing;
}

}  // namespace pelora::changes
