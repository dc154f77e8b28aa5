// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "hosts/headless/headless_dialog.h"
#include "hosts/ldap/directory_store.h"
#include "platform/field_rows.h"

namespace pelora::testing {

/// What a field that was edited is to have become in the directory, by its control alone: the
/// simplest thing that can be said of a sheet.
struct WantedValue {
  FieldKind kind = FieldKind::kText;
  /// The attribute that holds it; of a list with a default entry, that of the entry, too.
  std::vector<std::string> attributes;
  /// What is shown; of a box "1" or "0".
  std::string text{};
  /// Of a list, without regard to case.
  std::set<std::string> values{};

  [[nodiscard]] bool IsList() const {
    return kind == FieldKind::kDefaultEntry || kind == FieldKind::kList ||
           kind == FieldKind::kNameList;
  }
};

/// Nothing of a field of which its control does not say so much: one that cannot be used, a box
/// between two states, a row of a list view, an empty text or 0, which is not always written.
/// `rows` are all of the page.
[[nodiscard]] std::optional<WantedValue> WantedIn(HeadlessDialog& page, const FieldRow& row,
                                                  std::span<const FieldRow> rows);

/// Whether an object with these attributes has it so.
[[nodiscard]] bool IsStored(const WantedValue& wanted, const ldap::AttributeMap& attributes);

/// Values without regard to case.
[[nodiscard]] std::set<std::string> Folded(const std::vector<std::string>& values);

}  // namespace pelora::testing
