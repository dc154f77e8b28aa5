// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <talloc.h>

#include <memory>

namespace pelora::ldap {

struct TallocFree {
  void operator()(void* memory) const { talloc_free(memory); }
};

/// Owns a piece of libldb's memory and everything that hangs on it.
template <class T>
using TallocPtr = std::unique_ptr<T, TallocFree>;

/// A parent for whatever one operation allocates; all of it goes with it.
using TallocScope = TallocPtr<void>;

[[nodiscard]] inline TallocScope MakeTallocScope() { return TallocScope(talloc_new(nullptr)); }

}  // namespace pelora::ldap
