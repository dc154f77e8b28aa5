// SPDX-License-Identifier: Apache-2.0
#include "pages/objects/prop_page_user.h"

#include <array>

#include "pages/handler.h"
#include "resources/resource.h"

namespace pelora {
namespace {

using enum ControlNotification;

/// The e-mail addresses and the delegates belong to one user.
constexpr std::array<ControlId, 10> kMultiSelectHideList = {
    IDC_EMAIL_LIST,   IDC_SENDAS_LIST,  IDC_EMAIL_GROUP,   IDC_SENDAS_GROUP, IDC_EMAIL_ADD,
    IDC_EMAIL_DELETE, IDC_EMAIL_MODIFY, IDC_EMAIL_DEFAULT, IDC_SENDAS_ADD,   IDC_SENDAS_DELETE};

}  // namespace

CPropPageUser::CPropPageUser(const Platform& platform)
    : CSnapInPropertyPage(platform, IID_IADsUser, kMultiSelectHideList, IDD_PROPPAGE_USER,
                          "Pelora"),
      account_(*this) {
  Route({
      {IDC_PELORA_ACCOUNT, kClicked, Handler(&account_, &CPropPageExtPelora::OnAccountClicked)},
      {IDC_PELORA_HIDDEN, kClicked, Handler(&account_, &CPropPageExtPelora::OnHiddenClicked)},
  });
}

}  // namespace pelora
