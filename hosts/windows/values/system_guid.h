// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bit>

#include "hosts/windows/system_headers.h"
#include "platform/guid.h"

namespace pelora::windows {

/// The same 128 bits as the system's type and as the ports'.
constexpr ::GUID ToSystem(const Guid& guid) { return std::bit_cast<::GUID>(guid); }
constexpr Guid FromSystem(const ::GUID& guid) { return std::bit_cast<Guid>(guid); }

}  // namespace pelora::windows
