// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/program/screenshot.h"

#include <QCoreApplication>
#include <QImageWriter>
#include <QPixmap>

namespace pelora::console {

QString WriteScreenshot(QWidget& window, const QString& path) {
  window.show();
  QCoreApplication::processEvents();
  QImageWriter writer(path, "png");
  if (writer.write(window.grab().toImage())) return {};
  return QStringLiteral("%1: the picture cannot be written: %2").arg(path, writer.errorString());
}

}  // namespace pelora::console
