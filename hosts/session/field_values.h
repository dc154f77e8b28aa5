// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string>

#include "hosts/ldap/schema.h"
#include "hosts/session/page_fields.h"

namespace pelora::session {

/// Gathers what the selected objects have in each field, by what was read or written last: after
/// the page has been filled or written. `breathe` is called with every object; what happens within
/// it sees what was gathered before.
void GatherValues(
    PageFields& fields, const ldap::Schema& schema, const std::function<void()>& breathe = [] {});

/// The values that the selected objects have in a field of one value, as they were gathered last:
/// the most frequent first, then in the order of the texts. None for lists, which have many, and
/// for what stands in the rows of a list.
[[nodiscard]] std::span<const HeldValue> ValuesOf(const PageFields& fields, std::size_t field);

/// "different: 1500 (2), 4000 (1)", the most frequent ones; "not set" when no object has a value,
/// and empty when all have the same.
[[nodiscard]] std::string ValuesInPlace(std::span<const HeldValue> values);

/// One line for each of the most frequent values, with the names of the first of its objects.
[[nodiscard]] std::string ValuesAsLines(std::span<const HeldValue> values);

}  // namespace pelora::session
