// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>

#include "pages/edited_fields.h"
#include "pages/prop_page_ext_pelora.h"
#include "pages/prop_page_ext_person.h"
#include "pages/prop_page_ext_quota.h"
#include "pages/snap_in_property_page.h"

namespace pelora {

/// The tab of user objects: e-mail addresses, quota, account boxes, and of its own the account
/// type, a resource's capacity and the home server.
///
/// The resource type is written on every apply, touched or not. The capacity is written unless it
/// was edited and the account is no resource now; choosing a type overwrites whether it was edited.
class CPropPageUser final : public CSnapInPropertyPage {
 public:
  explicit CPropPageUser(const Platform& platform);

 private:
  ~CPropPageUser() override = default;

  HRESULT Load(const BoundObjects& objects);
  HRESULT Collect(ChangeList& changes);

  std::int32_t OnAccountTypeChanged();
  std::int32_t OnCapacityEdited();
  std::int32_t OnSelectServer();

  void LoadAccountType(const BoundObjects& objects) const;
  [[nodiscard]] IComboBox& AccountTypeList() const;
  /// Enables the capacity for resources and requires an address of active users.
  void FollowAccountType();

  CPropPageExtPerson person_;
  CPropPageExtQuota quota_;
  CPropPageExtPelora account_;
  EditedFields server_;

  bool type_changed_ = false;
  bool capacity_changed_ = false;
};

}  // namespace pelora
