// SPDX-License-Identifier: Apache-2.0
#include "pages/objects/prop_page_recipient.h"

#include <array>

#include "resources/resource.h"

namespace pelora {
namespace {

/// The e-mail addresses and the delegates belong to one object.
constexpr std::array<ControlId, 10> kMultiSelectHideList = {
    IDC_EMAIL_LIST,   IDC_SENDAS_LIST,  IDC_EMAIL_GROUP,   IDC_SENDAS_GROUP, IDC_EMAIL_ADD,
    IDC_EMAIL_DELETE, IDC_EMAIL_MODIFY, IDC_EMAIL_DEFAULT, IDC_SENDAS_ADD,   IDC_SENDAS_DELETE};

}  // namespace

CPropPageRecipient::CPropPageRecipient(const Platform& platform, DialogId dialog_template)
    : CSnapInPropertyPage(platform, IID_IADs, kMultiSelectHideList, dialog_template, "Pelora"),
      person_(*this, platform, false),
      account_(*this) {
  Add(person_);
  Add(account_);
}

}  // namespace pelora
