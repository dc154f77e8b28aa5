// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/windows/system_headers.h"
#include "platform/modal_dialogs.h"

namespace pelora::windows {

/// Modal dialogs from the templates of a module. One that goes with its owner, ended by nobody,
/// counts as cancelled.
class Win32ModalDialogs final : public IModalDialogs {
 public:
  explicit Win32ModalDialogs(HINSTANCE instance) : instance_(instance) {}

  [[nodiscard]] std::int32_t Run(DialogId dialog, IDialog* owner,
                                 IDialogController& controller) override;

 private:
  HINSTANCE instance_;
};

}  // namespace pelora::windows
