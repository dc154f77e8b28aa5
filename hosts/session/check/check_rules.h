// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/session/check/check_fields.h"
#include "hosts/session/check/check_notes.h"
#include "hosts/session/check/checked_object.h"

namespace pelora::session {

/// One thing that can be wrong with an object. A new rule is one of these and the function that it
/// names.
struct CheckRule {
  /// As scripts call it.
  std::string_view name;
  /// What it finds, as the end of a sentence.
  std::string_view finds;
  /// What it finds has one right answer, which can be written at once; where it has not for some
  /// objects, their findings have no mend.
  bool is_mended = false;
  /// Whether it needs to know which objects and servers there are.
  bool looks_up_objects = false;
  bool looks_up_servers = false;
  /// The attributes that it looks at, beside `objectClass`; what is left of the places is empty.
  std::array<std::string_view, 6> attributes{};
  /// Those that follow from the fields or the catalogue; may be null.
  std::vector<std::string> (*further_attributes)(const CheckFields& fields) = nullptr;
  /// Looks at one object, with at least these attributes, and notes what it finds.
  void (*look)(const CheckedObject& object, CheckNotes& notes) = nullptr;
};

/// Every rule, in the order in which findings are told.
[[nodiscard]] std::span<const CheckRule> CheckRules();
/// Everything that a rule looks at, beside `objectClass`.
[[nodiscard]] std::vector<std::string> AttributesOf(const CheckRule& rule,
                                                    const CheckFields& fields);
/// Null when there is none of that name.
[[nodiscard]] const CheckRule* FindCheckRule(std::string_view name);

}  // namespace pelora::session
