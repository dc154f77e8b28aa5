// SPDX-License-Identifier: Apache-2.0
// Runs the tests of a program inside an application that draws its windows in memory.
#include <gmock/gmock.h>

#include <QApplication>
#include <QTemporaryDir>

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  // What programs remember of their user is nobody's but the test's.
  const QTemporaryDir settings;
  qputenv("XDG_CONFIG_HOME", settings.path().toUtf8());
  // The same look on every machine, whatever desktop it has.
  qunsetenv("QT_QPA_PLATFORMTHEME");
  const QApplication application(argc, argv);
  // Not before: a style that belongs to no application is lost when a test takes another.
  QApplication::setStyle(QStringLiteral("fusion"));
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
