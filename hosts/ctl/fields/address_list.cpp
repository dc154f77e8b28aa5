// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/fields/address_list.h"

#include <algorithm>
#include <utility>

#include "hosts/ldap/case_fold.h"
#include "hosts/session/visible_text.h"

namespace pelora::ctl {

using enum ListStep::Action;

bool IsSameText(const std::string& left, const std::string& right) {
  // What is printed is taken for what is stored, also where that is no UTF-8.
  return ldap::FoldCase(session::ValidText(left)) == ldap::FoldCase(session::ValidText(right));
}

std::vector<std::string>::iterator FindText(std::vector<std::string>& values,
                                            const std::string& value) {
  return std::ranges::find_if(
      values, [&value](const std::string& known) { return IsSameText(known, value); });
}

bool AddressList::Has(const std::string& value) const {
  if (!default_.empty() && IsSameText(default_, value)) return true;
  return std::ranges::any_of(
      others_, [&value](const std::string& other) { return IsSameText(other, value); });
}

void AddressList::MakeDefault(const std::string& value) {
  if (!default_.empty() && IsSameText(default_, value)) return;
  if (default_.empty() && others_.empty()) return Add(value);
  if (!Has(value)) Add(value);
  const auto place = FindText(others_, value);
  steps_.push_back({kMakeDefault, *place});
  std::string before = std::exchange(default_, *place);
  others_.erase(place);
  if (!before.empty()) others_.push_back(std::move(before));
}

void AddressList::Change(Assignment::Operation operation, std::span<const std::string> values) {
  if (operation == Assignment::Operation::kSet) {
    const std::vector<std::string> before = others_;
    for (const std::string& other : before) {
      const auto is_same = [&other](const std::string& value) { return IsSameText(other, value); };
      if (std::ranges::none_of(values, is_same)) Remove(other);
    }
  }
  for (const std::string& value : values) {
    if (operation == Assignment::Operation::kRemove) {
      Remove(value);
    } else if (!Has(value)) {
      Add(value);
    }
  }
}

void AddressList::Add(const std::string& value) {
  steps_.push_back({kAdd, value});
  if (default_.empty() && others_.empty()) {
    default_ = value;
  } else {
    others_.push_back(value);
  }
}

void AddressList::Remove(const std::string& value) {
  if (const auto place = FindText(others_, value); place != others_.end()) {
    steps_.push_back({kRemove, *place});
    others_.erase(place);
    return;
  }
  if (default_.empty() || !IsSameText(default_, value)) return;
  steps_.push_back({kRemove, default_});
  default_.clear();
  if (others_.empty()) return;
  default_ = others_.front();
  others_.erase(others_.begin());
}

}  // namespace pelora::ctl
