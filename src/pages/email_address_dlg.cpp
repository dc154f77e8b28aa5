// SPDX-License-Identifier: Apache-2.0
#include "pages/email_address_dlg.h"

#include <utility>

#include "pages/handler.h"
#include "resources/resource.h"

namespace pelora {

CEmailAddressDlg::CEmailAddressDlg(const Platform& platform, std::string address)
    : CModalDialog(platform, IDD_EMAIL_ADDRESS), address_(std::move(address)) {
  using enum ControlNotification;
  Route({
      {kDialogOk, kClicked, Handler(this, &CEmailAddressDlg::OnOk)},
      {kDialogCancel, kClicked, Handler(this, &CEmailAddressDlg::OnCancel)},
  });
}

std::int32_t CEmailAddressDlg::InitDialog() {
  Dialog().SetText(IDC_EMAIL_ADDRESS, address_);
  return 0;
}

std::int32_t CEmailAddressDlg::OnOk() {
  std::string typed = Dialog().Text(IDC_EMAIL_ADDRESS);
  if (typed.empty()) {
    platform().message_box.Show(dialog(), {.text = "Wrong emailaddress", .caption = std::nullopt});
    return 0;
  }
  address_ = std::move(typed);
  Dialog().End(kDialogOk);
  return 0;
}

std::int32_t CEmailAddressDlg::OnCancel() {
  Dialog().End(kDialogCancel);
  return 0;
}

}  // namespace pelora
