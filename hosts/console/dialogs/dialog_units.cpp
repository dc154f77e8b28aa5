// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/dialogs/dialog_units.h"

namespace pelora::console {
namespace {

constexpr double kUnitsPerBaseX = 4;
constexpr double kUnitsPerBaseY = 8;

}  // namespace

QRect DialogUnits::ToPixels(int x, int y, int width, int height) const {
  const auto across = [this](int units) { return qRound(units * base_x / kUnitsPerBaseX); };
  const auto down = [this](int units) { return qRound(units * base_y / kUnitsPerBaseY); };
  return {across(x), down(y), across(width), down(height)};
}

QRect DialogUnits::ToPixels(const resources::DialogItem& item) const {
  return ToPixels(item.x, item.y, item.width, item.height);
}

QSize DialogUnits::SizeOf(const resources::DialogTemplate& dialog) const {
  return ToPixels(0, 0, dialog.width, dialog.height).size();
}

DialogUnits UnitsOfFont(const QFontMetrics& metrics) {
  const QString letters = QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
  return {.base_x = static_cast<double>((metrics.horizontalAdvance(letters) / 26 + 1) / 2),
          .base_y = static_cast<double>(metrics.height())};
}

}  // namespace pelora::console
