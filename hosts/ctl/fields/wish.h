// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "hosts/ctl/fields/fields.h"
#include "hosts/session/directory_browser.h"

namespace pelora::ctl {

/// One thing that is done with a list.
struct ListStep {
  enum class Action : std::uint8_t { kAdd, kRemove, kMakeDefault };
  Action action = Action::kAdd;
  /// For one that is there, as it is written there.
  std::string value;
};

/// What is to be done with one field of an object's page: worked out from what was asked for and
/// what is there, and nothing where both are the same.
struct Wish {
  const Field* field = nullptr;
  /// A text, a number's digits; empty to empty the field.
  std::string text{};
  bool flag = false;
  std::size_t choice = 0;
  std::vector<ListStep> steps{};
  /// Values of a list that are to go and that the tab does not show: names of deleted objects, as
  /// they are stored.
  std::vector<std::string> hidden_removals{};
  /// What a chooser answers: the objects behind a name, a server, or the names to be added.
  std::vector<session::DirectoryObject> chosen{};

  /// Whether there is nothing to be done on the tab: it does not show what is to go.
  [[nodiscard]] bool IsOnlyHidden() const { return !hidden_removals.empty() && steps.empty(); }
};

}  // namespace pelora::ctl
