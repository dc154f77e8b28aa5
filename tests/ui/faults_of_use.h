// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAction>
#include <QWidget>
#include <string>
#include <vector>

namespace pelora::test {

/// What keeps a window from being used without a mouse, one line each: controls to which no letter
/// leads, and letters that lead to two. OK, Cancel and Close have Enter and Escape.
[[nodiscard]] std::vector<std::string> FaultsOfKeys(const QWidget& window);

/// The same of the entries of a menu, and of the menus that they open.
[[nodiscard]] std::vector<std::string> FaultsOfMenu(const QList<QAction*>& entries);

/// Texts on several lines that do not show whole, one line each. Names may end in dots.
[[nodiscard]] std::vector<std::string> FaultsOfTexts(const QWidget& window);

/// Controls for which a screen reader has no name, one line each.
[[nodiscard]] std::vector<std::string> FaultsOfNames(const QWidget& window);

}  // namespace pelora::test
