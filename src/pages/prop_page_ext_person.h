// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "directory/multi_value_attribute.h"
#include "pages/name_list.h"
#include "pages/prop_page_ext.h"

namespace pelora {

/// All that addresses an object by mail: its e-mail addresses, of which the default one is kept
/// apart from the others, and the objects that may send in its name.
///
/// The default address is written only when it changed itself, and never cleared, even when the
/// last address is deleted; the other addresses and the delegates are replaced as a whole.
class CPropPageExtPerson final : public CPropPageExt {
 public:
  /// `email_required`: the object is to keep at least one address.
  CPropPageExtPerson(CPropPage& page, const Platform& platform, bool email_required);

  void set_email_required(bool required) { email_required_ = required; }

  HRESULT Load(const BoundObjects& objects);
  HRESULT Collect(ChangeList& changes);
  HRESULT Validate(std::string* message) const;
  /// The buttons and the selections of both lists.
  [[nodiscard]] std::vector<Command> Commands();
  /// The default address, the other addresses, the delegates.
  [[nodiscard]] std::vector<FieldRow> Rows();

 private:
  std::int32_t OnAddAddress();
  /// 1 when no address is selected.
  std::int32_t OnModifyAddress();
  std::int32_t OnDeleteAddress();
  std::int32_t OnSetDefaultAddress();
  std::int32_t OnAddressSelected();

  void LoadDefaultAddress(const BoundObjects& objects);
  void CollectAddresses(ChangeList& changes) const;
  [[nodiscard]] std::function<void()> TakeDownAddresses();
  void UpdateAddressButtons() const;
  [[nodiscard]] IListBox& AddressList() const;

  const Platform& platform_;
  MultiValueAttribute addresses_;
  NameList delegates_;
  bool email_required_;
};

}  // namespace pelora
