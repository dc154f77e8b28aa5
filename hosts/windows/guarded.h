// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <new>

#include "platform/hresult.h"

namespace pelora::windows {

/// Runs what answers a status and lets no exception out: callers across a component or window
/// boundary could not take one. An exception becomes `E_OUTOFMEMORY` or `E_UNEXPECTED`.
template <class Action>
[[nodiscard]] HRESULT Guarded(Action&& action) noexcept {
  try {
    return action();
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (...) {
    return E_UNEXPECTED;
  }
}

}  // namespace pelora::windows
