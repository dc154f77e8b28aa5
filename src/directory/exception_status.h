// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/hresult.h"

namespace pelora {

/// What the exception being handled comes down to where it is stopped: `E_OUTOFMEMORY` or
/// `E_UNEXPECTED`. To be called within a `catch` block.
[[nodiscard]] HRESULT StatusOfException();

}  // namespace pelora
