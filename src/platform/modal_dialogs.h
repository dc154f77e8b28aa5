// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "platform/dialog_controller.h"

namespace pelora {

/// Runs modal dialogs made from the module's templates.
class IModalDialogs {
 public:
  virtual ~IModalDialogs() = default;

  /// Runs a dialog, modal to `owner` (none: the active window), until its controller ends it, and
  /// gives the result it ended with; -1 when it could not be made. The controller gets
  /// `OnInitDialog`, the commands and `OnDestroy`. Closing the window is a click on
  /// `kDialogCancel`, Enter one on the default button.
  [[nodiscard]] virtual std::int32_t Run(DialogId dialog, IDialog* owner,
                                         IDialogController& controller) = 0;
};

}  // namespace pelora
