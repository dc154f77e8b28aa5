// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "pages/modal_dialog.h"

namespace pelora {

/// The dialog in which one e-mail address is typed. Any text but the empty one is an address: it is
/// taken as typed, blanks and all.
class CEmailAddressDlg final : public CModalDialog {
 public:
  /// `address` is what the edit box shows at first.
  CEmailAddressDlg(const Platform& platform, std::string address);

  /// The address given, until the dialog was closed with OK; then the one typed.
  [[nodiscard]] const std::string& address() const { return address_; }

 private:
  std::int32_t InitDialog() override;
  std::int32_t OnOk();
  std::int32_t OnCancel();

  std::string address_;
};

}  // namespace pelora
