// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/field_rights.h"

#include <algorithm>

namespace pelora::session {

void FieldRights::Learn(const ldap::Entry& entry) {
  ++count_;
  const auto said = entry.attributes.find(kAttribute);
  if (said != entry.attributes.end()) {
    ++said_[Allowed(said->second.begin(), said->second.end())];
  } else if (says_nothing_for_none_) {
    ++said_[Allowed()];
  }
}

std::string FieldRights::WhyReadOnly(const FieldRow& row) const {
  const auto refuses = [&row](const Allowed& allowed) {
    return std::ranges::any_of(row.attributes, [&allowed](std::string_view attribute) {
      return !allowed.contains(std::string(attribute));
    });
  };
  std::size_t refused = 0;
  for (const auto& [allowed, objects] : said_) refused += refuses(allowed) ? objects : 0;
  if (refused == 0) return {};
  if (count_ == 1) return "You have no right to change this.";
  return "You have no right to change this of " + std::to_string(refused) + " of the " +
         std::to_string(count_) + " objects.";
}

std::vector<ControlId> ControlsOf(const FieldRow& row) {
  std::vector<ControlId> controls;
  // The control of a row among others shows them all.
  if (row.entry.empty()) controls.push_back(row.control);
  for (const ControlId button : {row.choose, row.remove, row.make_default}) {
    if (button != 0) controls.push_back(button);
  }
  for (const ControlId button : row.choice_buttons) {
    if (button != 0) controls.push_back(button);
  }
  return controls;
}

}  // namespace pelora::session
