// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "directory/attribute_catalogue.h"
#include "platform/variant.h"

namespace pelora {

/// Kind of value that a change carries. Any other number stops the writing.
enum class ChangeType : std::uint16_t {
  /// Several values, in `AttributeChange::variant`.
  kMultiValued = 0,
  /// An integer, from the text in `AttributeChange::value`.
  kInteger = VT_I4,
  /// The text in `AttributeChange::value`.
  kString = VT_BSTR,
};

/// One pending write of one attribute.
struct AttributeChange {
  std::string value{};
  /// LDAP display name.
  std::string name{};
  /// Leave the attribute as it is: not touched, or not writable for this selection.
  bool skip = false;
  ChangeType type = ChangeType::kString;
  /// An array of strings for a multi-valued change; empty otherwise. The first write uses it up.
  Variant variant{};
};

/// What an apply writes to each selected object, in this order.
using ChangeList = std::vector<AttributeChange>;

/// A change of a single-valued catalogue attribute to `value`. Whether it is skipped follows from
/// the attribute's rule for multi-selections and from whether its field was changed.
[[nodiscard]] AttributeChange MakeChange(const Attribute& attribute, std::string value,
                                         bool changed, bool is_multi_select);

/// A change of a multi-valued catalogue attribute to the array `values`.
[[nodiscard]] AttributeChange MakeListChange(const Attribute& attribute, Variant values,
                                             bool is_multi_select);

}  // namespace pelora
