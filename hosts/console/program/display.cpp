// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/program/display.h"

#include <cstdio>
#include <cstdlib>

#include "hosts/console/program/command_line.h"

namespace pelora::console {
namespace {

constexpr const char* kPlatformVariable = "QT_QPA_PLATFORM";

void EndOnFatalMessage(QtMsgType type, const QMessageLogContext& /*context*/,
                       const QString& message) {
  if (type != QtFatalMsg) return;
  const QByteArray reason = message.simplified().toLocal8Bit();
  std::fprintf(stderr, "pelora-console: no display can be opened: %s\n", reason.constData());
  std::fflush(stderr);
  std::_Exit(kExitFailure);
}

}  // namespace

QString ChooseDisplay(bool only_picture) {
  if (qEnvironmentVariableIsSet(kPlatformVariable)) return {};
  if (only_picture) {
    qputenv(kPlatformVariable, "offscreen");
    return {};
  }
  const bool has_display =
      !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
  if (has_display) return {};
  return QStringLiteral(
      "no display: neither DISPLAY nor WAYLAND_DISPLAY is set. Start the console in a desktop "
      "session, or let it write a picture with --screenshot FILE.");
}

QuietToolkit::QuietToolkit() : previous_(qInstallMessageHandler(EndOnFatalMessage)) {}

QuietToolkit::~QuietToolkit() { qInstallMessageHandler(previous_); }

}  // namespace pelora::console
