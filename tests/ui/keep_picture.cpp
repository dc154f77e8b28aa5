// SPDX-License-Identifier: Apache-2.0
#include "tests/ui/keep_picture.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QHash>
#include <QImageWriter>

#include "hosts/console/text/qt_text.h"

namespace pelora::test {
namespace {

/// So many colours have room in a table.
constexpr qsizetype kMostInTable = 256;
constexpr int kSmallest = 0;

/// The same picture with a table of its colours, when it has few: a window has.
QImage WithTable(const QImage& picture) {
  const QImage drawn = picture.convertToFormat(QImage::Format_RGB32);
  QImage small(drawn.size(), QImage::Format_Indexed8);
  QHash<QRgb, uchar> places;
  QList<QRgb> colours;
  for (int y = 0; y < drawn.height(); ++y) {
    const auto* const line = reinterpret_cast<const QRgb*>(drawn.constScanLine(y));
    uchar* const indexes = small.scanLine(y);
    for (int x = 0; x < drawn.width(); ++x) {
      auto place = places.constFind(line[x]);
      if (place == places.constEnd()) {
        if (colours.size() == kMostInTable) return drawn;
        place = places.insert(line[x], static_cast<uchar>(colours.size()));
        colours.append(line[x]);
      }
      indexes[x] = *place;
    }
  }
  small.setColorTable(colours);
  return small;
}

}  // namespace

void KeepPicture(QWidget& window, const std::string& name) {
  QCoreApplication::processEvents();
  const QDir folder(QStringLiteral(PELORA_SCREENSHOT_FOLDER));
  EXPECT_TRUE(folder.mkpath(QStringLiteral(".")));
  QImageWriter writer(folder.filePath(console::ToQString(name) + QStringLiteral(".png")), "png");
  writer.setQuality(kSmallest);
  EXPECT_TRUE(writer.write(WithTable(window.grab().toImage()))) << name;
}

}  // namespace pelora::test
