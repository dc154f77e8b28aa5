// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/console/dialogs/name_label.h"

namespace pelora::console {

/// What a dialog says below its fields while they are typed into: what is wrong, what comes of it,
/// why the directory did not take it.
///
/// It has room for some lines from the start, so that nothing jumps with what it says. A text that
/// needs more makes its window higher, as far as the screen has room; none is cut off otherwise.
class HintLabel final : public NameLabel {
 public:
  HintLabel(const char* name, int lines, QWidget* parent);

  /// Shows a text, whoever wrote it, in place of the one before.
  void Say(const QString& text);
};

}  // namespace pelora::console
