// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "directory/ascii_case.h"
#include "hosts/ldap/directory_store.h"

namespace pelora::changes {

/// The values of some attributes, by their names without case: of so few, and so often made, that
/// they are better looked through than kept in order.
class NamedValues {
 public:
  /// Null: nothing is known of the attribute.
  [[nodiscard]] const ldap::AttributeValues* Find(std::string_view attribute) const {
    const std::size_t place = PlaceOf(attribute);
    return place == rows_.size() ? nullptr : &rows_[place].second;
  }
  void Set(std::string_view attribute, const ldap::AttributeValues& values) {
    const std::size_t place = PlaceOf(attribute);
    if (place < rows_.size()) {
      rows_[place].second = values;
      return;
    }
    if (rows_.empty()) rows_.reserve(kUsual);
    rows_.emplace_back(attribute, values);
  }

 private:
  using Row = std::pair<std::string, ldap::AttributeValues>;
  /// What a tab asks for.
  static constexpr std::size_t kUsual = 16;

  /// Behind the last one when it is not there.
  [[nodiscard]] std::size_t PlaceOf(std::string_view attribute) const {
    const auto found = std::ranges::find_if(
        rows_, [attribute](const Row& row) { return EqualsWithoutCase(row.first, attribute); });
    return static_cast<std::size_t>(found - rows_.begin());
  }

  std::vector<Row> rows_;
};

}  // namespace pelora::changes
