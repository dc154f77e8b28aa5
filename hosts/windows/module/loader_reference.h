// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/windows/values/unique_resource.h"

namespace pelora::windows {

struct LoaderReferenceTraits {
  using Type = HMODULE;
  static constexpr Type kNone = nullptr;
  static void Close(Type module);
};

/// A reference of the loader's to the module that this code is part of: the code stays in memory
/// for as long, whatever the component library thinks of the module.
///
/// It is given back a second after its owner went, by a thread of the system's: whoever let go last
/// has long returned from this code then. Where the system has no such thread to offer it is kept.
using LoaderReference = UniqueResource<LoaderReferenceTraits>;

/// None when the system refuses it.
[[nodiscard]] LoaderReference HoldThisCode();

}  // namespace pelora::windows
