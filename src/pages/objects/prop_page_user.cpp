// SPDX-License-Identifier: Apache-2.0
#include "pages/objects/prop_page_user.h"

#include <array>

#include "resources/resource.h"

namespace pelora {
namespace {

/// The e-mail addresses and the delegates belong to one user.
constexpr std::array<ControlId, 10> kMultiSelectHideList = {
    IDC_EMAIL_LIST,   IDC_SENDAS_LIST,  IDC_EMAIL_GROUP,   IDC_SENDAS_GROUP, IDC_EMAIL_ADD,
    IDC_EMAIL_DELETE, IDC_EMAIL_MODIFY, IDC_EMAIL_DEFAULT, IDC_SENDAS_ADD,   IDC_SENDAS_DELETE};

/// There is no list of warning recipients on the tab.
constexpr std::array<ControlId, 3> kLackingControls = {
    IDC_QUOTA_RECIPIENTS, IDC_QUOTA_RECIPIENTS_ADD, IDC_QUOTA_RECIPIENTS_DELETE};

}  // namespace

CPropPageUser::CPropPageUser(const Platform& platform)
    : CSnapInPropertyPage(platform, IID_IADsUser, kMultiSelectHideList, IDD_PROPPAGE_USER,
                          "Pelora"),
      person_(*this, platform, true),
      quota_(*this, platform, QuotaKind::kOwn),
      account_(*this),
      user_(*this, person_) {
  SetLackingControls(kLackingControls);
  Add(person_);
  Add(quota_);
  Add(account_);
  Add(user_);
}

}  // namespace pelora
