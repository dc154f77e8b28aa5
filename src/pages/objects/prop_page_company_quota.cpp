// SPDX-License-Identifier: Apache-2.0
#include "pages/objects/prop_page_company_quota.h"

#include <array>

#include "resources/resource.h"

namespace pelora {
namespace {

/// The recipients belong to one company.
constexpr std::array<ControlId, 8> kMultiSelectHideList = {
    IDC_QUOTA_RECIPIENTS_GROUP,    IDC_USER_QUOTA_RECIPIENTS_GROUP, IDC_QUOTA_RECIPIENTS,
    IDC_QUOTA_RECIPIENTS_ADD,      IDC_QUOTA_RECIPIENTS_DELETE,     IDC_USER_QUOTA_RECIPIENTS,
    IDC_USER_QUOTA_RECIPIENTS_ADD, IDC_USER_QUOTA_RECIPIENTS_DELETE};

/// Of the company's own limits the warning level alone is on the tab.
constexpr std::array<ControlId, 2> kLackingControls = {IDC_QUOTA_SOFT, IDC_QUOTA_HARD};

}  // namespace

CPropPageCompanyQuota::CPropPageCompanyQuota(const Platform& platform)
    : CSnapInPropertyPage(platform, IID_IADs, kMultiSelectHideList, IDD_PROPPAGE_COMPANY_QUOTA,
                          "Pelora Quota"),
      company_quota_(*this, platform, QuotaKind::kOwn),
      user_quota_(*this, platform, QuotaKind::kUserDefault) {
  SetLackingControls(kLackingControls);
  Add(company_quota_);
  Add(user_quota_);
}

}  // namespace pelora
