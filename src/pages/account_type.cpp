// SPDX-License-Identifier: Apache-2.0
#include "pages/account_type.h"

#include <cstdint>
#include <string>

#include "directory/ascii_case.h"
#include "directory/attribute_catalogue.h"
#include "resources/resource.h"

namespace pelora {
namespace {

constexpr const Attribute& kSharedStoreOnly = CatalogueEntry("peloraSharedStoreOnly");
constexpr const Attribute& kAdmin = CatalogueEntry("peloraAdmin");
constexpr const Attribute& kResourceType = CatalogueEntry("peloraResourceType");

/// The row of an account: its resource type comes before its being a shared store, both before its
/// administrator level. A level beyond the list has no row.
std::optional<RowIndex> RowOf(std::string_view resource_type, bool is_shared_store,
                              std::uint32_t admin_level) {
  if (EqualsWithoutCase(resource_type, kAccountTypes.at(kRoom).resource_type)) return kRoom;
  if (EqualsWithoutCase(resource_type, kAccountTypes.at(kEquipment).resource_type)) {
    return kEquipment;
  }
  if (is_shared_store) return kSharedStore;
  if (admin_level == 0) return kActiveUser;
  const RowIndex row = kAdministrator + RowIndex{admin_level} - 1;
  return row < kAccountTypes.size() ? std::optional(row) : std::nullopt;
}

}  // namespace

std::optional<RowIndex> AccountTypeOf(const BoundObjects& objects) {
  const ValueSummary<bool> shared_store_only = SummarizeFlag(objects, kSharedStoreOnly.name);
  const ValueSummary<std::int32_t> admin = SummarizeInteger(objects, kAdmin.name);
  const ValueSummary<std::string> resource_type = SummarizeString(objects, kResourceType.name);
  const bool is_uniform =
      shared_store_only.IsUniform() && admin.IsUniform() && resource_type.IsUniform();
  if (!is_uniform) return std::nullopt;
  return RowOf(resource_type.value(), shared_store_only.value(),
               static_cast<std::uint32_t>(admin.value()));
}

FieldRow AccountTypeRow() {
  FieldRow row = {
      .name = "accountType",
      .kind = FieldKind::kChoice,
      .control = IDC_ACCOUNT_TYPE,
      .title = "Account type",
      .attributes = {kAdmin.name, kSharedStoreOnly.name, kResourceType.name},
      .choice_of = [](IADs& object) { return AccountTypeOf({Ref<IADs>(&object)}); },
  };
  for (const AccountType& type : kAccountTypes) row.choices.push_back(type.text);
  return row;
}

}  // namespace pelora
