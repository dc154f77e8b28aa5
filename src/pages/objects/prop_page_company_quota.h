// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/prop_page_ext_quota.h"
#include "pages/snap_in_property_page.h"

namespace pelora {

/// The quota tab of companies: the company's own quota, of which the tab shows the warning level
/// alone, the default quota of its users, and who is warned of either.
class CPropPageCompanyQuota final : public CSnapInPropertyPage {
 public:
  explicit CPropPageCompanyQuota(const Platform& platform);

 private:
  ~CPropPageCompanyQuota() override = default;

  CPropPageExtQuota company_quota_;
  CPropPageExtQuota user_quota_;
};

}  // namespace pelora
