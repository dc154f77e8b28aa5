// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "hosts/ctl/text/assignment.h"
#include "hosts/session/own_values.h"

namespace pelora::ctl {

/// What a new object gets beside the fields of the wizards' pages: what a program asks for itself.
struct OwnAssignments {
  session::OwnValues values;
  /// Other than the name.
  std::optional<std::string> display_name;
};

/// Whether a field of a new object is one of those that a program asks for itself, of whatever
/// kind.
[[nodiscard]] bool IsOwnField(const std::string& field);

/// Sorts out what is a program's own of the assignments for a new object of a kind; the others stay
/// in `assignments`. A logon name that is not given is suggested from the name. Throws `Refusal`
/// for a field that the kind has not, and for a kind of group that is none.
[[nodiscard]] OwnAssignments TakeOwn(const session::NewObjectKind& kind, const std::string& name,
                                     std::vector<Assignment>& assignments);

}  // namespace pelora::ctl
