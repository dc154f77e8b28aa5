// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/prop_page_ext_dynamic.h"
#include "pages/prop_page_ext_pelora.h"
#include "pages/snap_in_property_page.h"

namespace pelora {

/// The groupware's tab of address lists: the account boxes, search base and query.
class CPropPageAddresslist final : public CSnapInPropertyPage {
 public:
  explicit CPropPageAddresslist(const Platform& platform);

 private:
  ~CPropPageAddresslist() override = default;

  CPropPageExtPelora account_;
  CPropPageExtDynamic search_;
};

}  // namespace pelora
