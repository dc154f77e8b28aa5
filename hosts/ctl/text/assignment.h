// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/session/distinguished_name.h"

namespace pelora::ctl {

/// What is asked of one field.
struct Assignment {
  enum class Operation : std::uint8_t { kSet, kAdd, kRemove };

  std::string field;
  Operation operation = Operation::kSet;
  /// As it was given.
  std::string value{};
};

/// Takes apart `FIELD=VALUE`, `FIELD+=VALUE` and `FIELD-=VALUE`. None for a text without `=`; the
/// field may come out empty.
[[nodiscard]] std::optional<Assignment> ParseAssignment(std::string_view text);

using session::IsDistinguishedName;

/// The arguments of a command that takes objects and assignments.
struct ObjectsAndAssignments {
  std::vector<std::string> objects;
  std::vector<Assignment> assignments;
};

/// Sorts arguments: distinguished names and texts without `=` are objects, all others assignments.
/// Throws `WrongUsage` for an assignment without a field.
[[nodiscard]] ObjectsAndAssignments SortArguments(const std::vector<std::string>& arguments);

/// The objects among the arguments of a command that takes nothing else. Throws `WrongUsage` for an
/// assignment.
[[nodiscard]] std::vector<std::string> OnlyObjects(const std::vector<std::string>& arguments);

}  // namespace pelora::ctl
