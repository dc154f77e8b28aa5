// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/text/assignment.h"

#include "hosts/ctl/ctl_error.h"

namespace pelora::ctl {

std::optional<Assignment> ParseAssignment(std::string_view text) {
  const std::size_t equals = text.find('=');
  if (equals == std::string_view::npos) return std::nullopt;
  Assignment assignment;
  std::string_view field = text.substr(0, equals);
  if (field.ends_with('+') || field.ends_with('-')) {
    assignment.operation =
        field.back() == '+' ? Assignment::Operation::kAdd : Assignment::Operation::kRemove;
    field.remove_suffix(1);
  }
  assignment.field = field;
  assignment.value = text.substr(equals + 1);
  return assignment;
}

ObjectsAndAssignments SortArguments(const std::vector<std::string>& arguments) {
  ObjectsAndAssignments sorted;
  for (const std::string& argument : arguments) {
    if (IsDistinguishedName(argument)) {
      sorted.objects.push_back(argument);
      continue;
    }
    std::optional<Assignment> assignment = ParseAssignment(argument);
    if (!assignment) {
      sorted.objects.push_back(argument);
    } else if (assignment->field.empty()) {
      throw WrongUsage(argument + ": no field is named before the =");
    } else {
      sorted.assignments.push_back(std::move(*assignment));
    }
  }
  return sorted;
}

std::vector<std::string> OnlyObjects(const std::vector<std::string>& arguments) {
  ObjectsAndAssignments sorted = SortArguments(arguments);
  if (sorted.assignments.empty()) return std::move(sorted.objects);
  throw WrongUsage(sorted.assignments.front().field + "=...: this command sets nothing");
}

}  // namespace pelora::ctl
