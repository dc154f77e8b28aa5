// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "hosts/session/page_fields.h"

namespace pelora::session {

/// A value that some of the selected objects have in a field.
struct FieldValue {
  /// As a person reads it: "yes" or "no" for a flag. Empty: not set.
  std::string text;
  /// Names of the objects, in the order of the selection.
  std::vector<std::string> objects;
};

/// The values that the selected objects have in a field of one value, by what was read or written
/// last: the most frequent first, then in the order of the texts. None for lists and choices, which
/// are not one attribute's value.
[[nodiscard]] std::vector<FieldValue> ValuesOf(const PageFields& fields, std::size_t field);

/// "different: 1500 (2), 4000 (1)"; "not set" when no object has a value, and empty when all have
/// the same.
[[nodiscard]] std::string ValuesInPlace(const std::vector<FieldValue>& values);

/// One line for each value, with the names of the first of its objects.
[[nodiscard]] std::string ValuesAsLines(const std::vector<FieldValue>& values);

}  // namespace pelora::session
