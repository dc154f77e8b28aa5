// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/changes/change.h"

namespace pelora::session {

/// Something that is wrong with one object.
struct Finding {
  /// The rule's name (`CheckRules`).
  std::string_view rule;
  std::string dn;
  /// What it is, in one line; it may hold values of the directory as they are.
  std::string message;
  /// The other objects that it concerns.
  std::vector<std::string> others{};
  /// What puts it right, where there is one right answer: values that go.
  std::optional<changes::ValueChange> mend{};
};

using FindingSink = std::function<void(Finding finding)>;

/// The changes that mend findings, one for each object that has something to mend, in the order of
/// their names.
[[nodiscard]] std::vector<changes::Change> MendsOf(const std::vector<Finding>& findings);

}  // namespace pelora::session
