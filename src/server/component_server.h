// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>
#include <vector>

#include "platform/platform.h"

namespace pelora {

/// Makes an object of a component class and gives its interface `iid` in `*object`, with a
/// reference for the caller. `CLASS_E_CLASSNOTAVAILABLE` for an identifier that is not in the class
/// table or has no page yet; `*object` is null after any failure. `platform` outlives the object.
[[nodiscard]] HRESULT CreateComponent(const Guid& class_id, const Platform& platform,
                                      const Guid& iid, void** object);

/// The tabs that objects of a directory class get where the directory registers none, in the order
/// in which a sheet shows them. `object_class` is the most specific class's LDAP display name,
/// compared without case; classes that are not known get none. Classes without a page yet are left
/// out.
[[nodiscard]] std::vector<Guid> DefaultTabs(std::string_view object_class);

}  // namespace pelora
