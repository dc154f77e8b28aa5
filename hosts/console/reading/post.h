// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <chrono>
#include <new>
#include <thread>

#include "hosts/console/reading/in_order.h"

namespace pelora::console {

/// Has something done on the thread of `receiver`, unless that goes before. Somebody waits for it:
/// where there is no memory for it, it is tried until there is.
template <class Action>
void PostSurely(QObject& receiver, const Action& action) {
  constexpr std::chrono::milliseconds kUntilNextTry{20};
  while (true) {
    try {
      QMetaObject::invokeMethod(&receiver, InOrder(Action(action)), Qt::QueuedConnection);
      return;
    } catch (const std::bad_alloc&) {
      std::this_thread::sleep_for(kUntilNextTry);
    }
  }
}

}  // namespace pelora::console
