// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFontMetrics>
#include <QRect>

#include "hosts/resources/dialog_template.h"

namespace pelora::console {

/// The length of a dialog unit: a quarter of `base_x` across, an eighth of `base_y` down, in the
/// logical pixels of Qt.
struct DialogUnits {
  double base_x = 0;
  double base_y = 0;

  [[nodiscard]] QRect ToPixels(int x, int y, int width, int height) const;
  [[nodiscard]] QRect ToPixels(const resources::DialogItem& item) const;
  [[nodiscard]] QSize SizeOf(const resources::DialogTemplate& dialog) const;
};

/// The units that a font gives: across the average width of the 52 Latin letters, down the font's
/// height, both whole numbers (6 and 13 for an 8 point Tahoma at 96 dots per inch).
[[nodiscard]] DialogUnits UnitsOfFont(const QFontMetrics& metrics);

}  // namespace pelora::console
