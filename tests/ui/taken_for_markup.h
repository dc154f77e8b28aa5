// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>
#include <string>
#include <vector>

namespace pelora::test {

/// A text as somebody may write it into the directory: an element that loads a file, control
/// characters, and a mark that turns the direction of what follows.
inline constexpr const char* kHostile = "<img src=\"/dev/zero\">\u202E\x01 & <b>x</b>";

/// How a window shows texts with the element of `kHostile`.
struct ShownTexts {
  /// Where a text would be taken for markup, turn the direction of what follows, or be drawn to an
  /// end that nobody reads, in words.
  std::vector<std::string> faults;
  /// Places (labels, tooltips, rows) that hold it.
  int places = 0;
};

/// Looks at every label, tooltip, action, button, choice and row of a window, and its title.
[[nodiscard]] ShownTexts TextsOf(const QWidget& window);

}  // namespace pelora::test
