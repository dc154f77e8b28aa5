// SPDX-License-Identifier: Apache-2.0
// Runs the tests of a program inside the console's own application, which outlives exceptions.
//
// With --nobody there is no test: something goes wrong, and nobody sits in front of it.
#include <gmock/gmock.h>

#include <QTemporaryDir>
#include <string_view>

#include "hosts/console/program/guarded_application.h"

namespace {

using pelora::console::GuardedApplication;

int GoWrongBeforeNobody(int argc, char** argv) {
  const GuardedApplication application(argc, argv, GuardedApplication::Audience::kNobody);
  QObject object;
  QMetaObject::invokeMethod(
      &object, [] { throw std::runtime_error("the cellar is full"); }, Qt::QueuedConnection);
  QCoreApplication::processEvents();
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  // What programs remember of their user is nobody's but the test's.
  const QTemporaryDir settings;
  qputenv("XDG_CONFIG_HOME", settings.path().toUtf8());
  qunsetenv("QT_QPA_PLATFORMTHEME");
  QApplication::setStyle(QStringLiteral("fusion"));
  if (argc > 1 && std::string_view(argv[1]) == "--nobody") return GoWrongBeforeNobody(argc, argv);
  const GuardedApplication application(argc, argv, GuardedApplication::Audience::kPerson);
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
