// SPDX-License-Identifier: Apache-2.0
// Runs the tests of a program inside an application whose windows are drawn in memory, on a screen
// of 1280x900 dots of which each letter has twice as many as usual.
#include <gmock/gmock.h>

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>

namespace {

constexpr const char* kScreen = R"({
  "synchronousWindowSystemEvents": true,
  "windowFrameMargins": true,
  "screens": [{"name": "small", "x": 0, "y": 0, "width": 640, "height": 450,
               "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 2}]
})";

}  // namespace

int main(int argc, char** argv) {
  const QTemporaryDir settings;
  QFile screen(settings.filePath(QStringLiteral("screen.json")));
  if (!screen.open(QIODevice::WriteOnly) || screen.write(kScreen) < 0) return 1;
  screen.close();
  qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + screen.fileName().toUtf8());
  // What programs remember of their user is nobody's but the test's.
  qputenv("XDG_CONFIG_HOME", settings.path().toUtf8());
  // The same look on every machine, whatever desktop it has.
  qunsetenv("QT_QPA_PLATFORMTHEME");
  QApplication::setStyle(QStringLiteral("fusion"));
  const QApplication application(argc, argv);
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
