// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <stop_token>

#include "hosts/ldap/directory_store.h"

namespace pelora::ldap {

/// Opens one more store of a directory, for use on the thread that calls it. May be called on any
/// thread; on failure `store` is left empty. `stop` ends the opening (-8) and whatever the store is
/// asked for, until the store is given another one.
using StoreOpener = std::function<StoreStatus(std::unique_ptr<IDirectoryStore>& store,
                                              const std::stop_token& stop)>;

}  // namespace pelora::ldap
