// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "directory/value_summary.h"
#include "platform/field_rows.h"

namespace pelora {

/// What a type of account is called in its list, and what is written for it.
struct AccountType {
  std::string_view text;
  std::string_view admin = "0";
  std::string_view shared_store_only = "0";
  /// Empty for what is no resource.
  std::string_view resource_type = {};

  [[nodiscard]] constexpr bool IsResource() const { return !resource_type.empty(); }
};

// Rows of the list of account types.
inline constexpr RowIndex kActiveUser = 0;
inline constexpr RowIndex kSharedStore = 1;
inline constexpr RowIndex kRoom = 2;
inline constexpr RowIndex kEquipment = 3;
inline constexpr RowIndex kAdministrator = 4;

/// In the order of the list; rooms and equipment are shared stores too.
inline constexpr std::array<AccountType, 6> kAccountTypes = {{
    {.text = "active user"},
    {.text = "shared store only", .shared_store_only = "1"},
    {.text = "room", .shared_store_only = "1", .resource_type = "room"},
    {.text = "equipment", .shared_store_only = "1", .resource_type = "equipment"},
    {.text = "administrator", .admin = "1"},
    {.text = "system administrator", .admin = "2"},
}};

/// The type of a row; one that stands for nothing special when no row is selected.
[[nodiscard]] constexpr AccountType AccountTypeAt(std::optional<RowIndex> row) {
  return row && *row < kAccountTypes.size() ? kAccountTypes[*row] : AccountType{};
}

/// The row that objects stand for; none when they differ in what makes it, or have a level beyond
/// the list.
[[nodiscard]] std::optional<RowIndex> AccountTypeOf(const BoundObjects& objects);

/// The account type as one field, on whatever page has its list.
[[nodiscard]] FieldRow AccountTypeRow();

}  // namespace pelora
