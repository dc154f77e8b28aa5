// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/objects/prop_page_general.h"
#include "resources/resource.h"

namespace pelora {

/// The General tab of dynamic distribution lists.
class CPropPageDynamicDistlistGeneral final : public CPropPageGeneral {
 public:
  explicit CPropPageDynamicDistlistGeneral(const Platform& platform)
      : CPropPageGeneral(platform, IDD_PROPPAGE_DYNAMIC_DISTLIST_GENERAL) {}

 private:
  ~CPropPageDynamicDistlistGeneral() override = default;
};

}  // namespace pelora
