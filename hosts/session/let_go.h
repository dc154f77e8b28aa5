// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <iterator>

#include "hosts/session/errands.h"

namespace pelora::session {

/// Lets go of things one after the other, and lets a window answer in between: thousands that go at
/// once take as long as thousands that are made.
template <class Items>
void LetGoOf(Items& items, IErrands& errands) {
  while (!items.empty()) {
    items.erase(std::prev(items.end()));
    errands.Breathe();
  }
}

}  // namespace pelora::session
