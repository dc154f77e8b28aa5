// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/program/guarded_application.h"

#include <QEvent>
#include <QMessageBox>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <utility>

#include "hosts/console/dialogs/qt_dialog.h"
#include "hosts/console/program/command_line.h"
#include "hosts/console/text/exception_text.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/sheets/scoped_flag.h"

namespace pelora::console {
namespace {

/// Enough for a box.
constexpr std::size_t kSetAside = std::size_t{1} << 20;

/// Whether an event comes again by itself when its handling failed.
bool IsRepeated(QEvent::Type type) {
  switch (type) {
    case QEvent::Timer:
    case QEvent::Paint:
    case QEvent::UpdateRequest:
    case QEvent::LayoutRequest:
      return true;
    default:
      return false;
  }
}

}  // namespace

GuardedApplication::GuardedApplication(int& argc, char** argv, Audience audience)
    : QApplication(argc, argv), audience_(audience) {
  SetMemoryAside();
}

GuardedApplication::~GuardedApplication() = default;

bool GuardedApplication::notify(QObject* receiver, QEvent* event) {
  const QEvent::Type type = event->type();
  try {
    return QApplication::notify(receiver, event);
  } catch (...) {
    TellException(IsRepeated(type));
  }
  return false;
}

void GuardedApplication::TellException(bool is_repeated) noexcept {
  try {
    std::fprintf(stderr, "pelora-console: something went wrong: %s\n", TextOfException().c_str());
  } catch (...) {
    std::fputs("pelora-console: something went wrong\n", stderr);
  }
  if (audience_ == Audience::kNobody) {
    std::fflush(stderr);
    std::_Exit(kExitFailure);
  }
  try {
    return Post(is_repeated);
  } catch (...) {
    const std::lock_guard lock(mutex_);
    set_aside_.reset();
  }
  try {
    Post(is_repeated);
  } catch (...) {
    // It stands on standard error.
  }
}

void GuardedApplication::TellHere(bool is_repeated) noexcept {
  auto* const application = dynamic_cast<GuardedApplication*>(instance());
  if (application != nullptr) application->TellException(is_repeated);
}

void GuardedApplication::Post(bool is_repeated) {
  QMetaObject::invokeMethod(
      this, [this, reason = TextOfException(), is_repeated] { Show(reason, is_repeated); },
      Qt::QueuedConnection);
}

void GuardedApplication::Show(const std::string& reason, bool is_repeated) {
  if (is_showing_ || (is_repeated && told_.contains(reason))) return;
  const sheets::ScopedFlag showing(is_showing_);
  {
    const std::lock_guard lock(mutex_);
    set_aside_.reset();
  }
  QWidget* const window = activeWindow();
  const QString where =
      window == nullptr ? QString() : QStringLiteral(" in \"%1\"").arg(window->windowTitle());
  {
    QMessageBox box(QMessageBox::Critical, applicationDisplayName(), {}, QMessageBox::Ok, window);
    box.setObjectName(QStringLiteral("exception_box"));
    SetPlainTexts(box, QStringLiteral("Something went wrong%1: %2.").arg(where, ToQString(reason)),
                  QStringLiteral("What was being done may not have come to its end. Everything "
                                 "that you have typed is still there: do it once more. If that "
                                 "goes wrong, too, close windows that you do not need."));
    RunModal(box);
  }
  SetMemoryAside();
  if (is_repeated) told_.insert(reason);
}

void GuardedApplication::SetMemoryAside() noexcept {
  const std::lock_guard lock(mutex_);
  if (!set_aside_) set_aside_.reset(new (std::nothrow) char[kSetAside]);
}

}  // namespace pelora::console
