// SPDX-License-Identifier: Apache-2.0
#include "directory/exception_status.h"

#include <new>

namespace pelora {

HRESULT StatusOfException() {
  try {
    throw;
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (...) {
    return E_UNEXPECTED;
  }
}

}  // namespace pelora
