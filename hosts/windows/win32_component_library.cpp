// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/win32_component_library.h"

#include "hosts/windows/system_headers.h"

namespace pelora::windows {

// The classes are registered as apartment-threaded, so the thread that calls is in an apartment of
// this kind already and the system does not refuse.
void Win32ComponentLibrary::CoInitialize() { ::CoInitialize(nullptr); }

void Win32ComponentLibrary::CoUninitialize() { ::CoUninitialize(); }

}  // namespace pelora::windows
