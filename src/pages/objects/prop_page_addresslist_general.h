// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/objects/prop_page_general.h"
#include "resources/resource.h"

namespace pelora {

/// The General tab of address lists.
class CPropPageAddresslistGeneral final : public CPropPageGeneral {
 public:
  explicit CPropPageAddresslistGeneral(const Platform& platform)
      : CPropPageGeneral(platform, IDD_PROPPAGE_ADDRESSLIST_GENERAL) {}

 private:
  ~CPropPageAddresslistGeneral() override = default;
};

}  // namespace pelora
