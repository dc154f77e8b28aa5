// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/windows/system_headers.h"
#include "platform/unknown.h"

namespace pelora::windows {

/// Makes an object of a class of the system's, in this process. `object` is empty after any
/// failure.
template <class Interface>
[[nodiscard]] HRESULT Activate(const CLSID& class_id, const IID& iid, Ref<Interface>& object) {
  const HRESULT status = CoCreateInstance(class_id, nullptr, CLSCTX_INPROC_SERVER, iid,
                                          reinterpret_cast<void**>(object.Put()));
  if (FAILED(status)) return status;
  return object ? S_OK : E_UNEXPECTED;
}

}  // namespace pelora::windows
