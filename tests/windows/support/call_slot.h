// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

#include "hosts/windows/system_headers.h"

namespace pelora::windows::test {

/// Calls the function in a slot of an interface, from 0, without any declaration of it.
template <class Result, class... Arguments>
Result CallSlot(void* interface_pointer, std::size_t slot, Arguments... arguments) {
  void** const table = *static_cast<void***>(interface_pointer);
  const auto function =
      reinterpret_cast<Result(STDMETHODCALLTYPE*)(void*, Arguments...)>(table[slot]);
  return function(interface_pointer, arguments...);
}

}  // namespace pelora::windows::test
