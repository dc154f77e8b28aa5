// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>

#include "hosts/ldap/directory_store.h"

namespace pelora::ldap {

/// Opens one more store of a directory, for use on the thread that calls it. May be called on any
/// thread; on failure `store` is left empty.
using StoreOpener = std::function<StoreStatus(std::unique_ptr<IDirectoryStore>& store)>;

}  // namespace pelora::ldap
