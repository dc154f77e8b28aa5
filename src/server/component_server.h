// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/platform.h"

namespace pelora {

/// Makes an object of a component class and gives its interface `iid` in `*object`, with a
/// reference for the caller. `CLASS_E_CLASSNOTAVAILABLE` for an identifier that is not in the class
/// table; `*object` is null after any failure. `platform` outlives the object.
[[nodiscard]] HRESULT CreateComponent(const Guid& class_id, const Platform& platform,
                                      const Guid& iid, void** object);

}  // namespace pelora
