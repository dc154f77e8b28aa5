// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

#include "pages/edited_fields.h"
#include "pages/prop_page_ext_person.h"

namespace pelora {

/// What there is of users alone: the home server, the account type and a resource's capacity.
///
/// The resource type is written on every apply, touched or not. The capacity is written unless it
/// was edited and the account is no resource now; choosing a type overwrites whether it was edited.
class CPropPageExtUser final : public CPropPageExt {
 public:
  /// `person` is told whether an address is required, as it is of active users.
  CPropPageExtUser(CPropPage& page, CPropPageExtPerson& person);

  HRESULT Load(const BoundObjects& objects);
  /// The account type, the capacity, the home server.
  HRESULT Collect(ChangeList& changes);
  [[nodiscard]] std::vector<Command> Commands();
  [[nodiscard]] std::vector<FieldRow> Rows() const;

 private:
  std::int32_t OnAccountTypeChanged();
  std::int32_t OnCapacityEdited();

  void LoadAccountType(const BoundObjects& objects) const;
  [[nodiscard]] IComboBox& AccountTypeList() const;
  /// Enables the capacity for resources and requires an address of active users.
  void FollowAccountType();

  CPropPageExtPerson& person_;
  EditedFields server_;
  bool type_changed_ = false;
  bool capacity_changed_ = false;
};

}  // namespace pelora
