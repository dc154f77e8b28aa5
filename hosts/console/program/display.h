// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace pelora::console {

/// Chooses, before the application object is made, where windows are drawn: in memory when only a
/// picture is wanted, else on the desktop's display. A choice made in the environment
/// (`QT_QPA_PLATFORM`) stands.
///
/// Gives an empty text, or a sentence that says why windows cannot be shown.
[[nodiscard]] QString ChooseDisplay(bool only_picture);

/// While it lives, the toolkit's own remarks are not printed, and a display that cannot be opened
/// ends the program with a sentence on standard error and `kExitFailure`, where the toolkit would
/// abort it.
class QuietToolkit {
 public:
  QuietToolkit();
  ~QuietToolkit();
  QuietToolkit(const QuietToolkit&) = delete;
  QuietToolkit& operator=(const QuietToolkit&) = delete;

 private:
  QtMessageHandler previous_;
};

}  // namespace pelora::console
