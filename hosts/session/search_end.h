// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "hosts/ldap/directory_store.h"

namespace pelora::session {

/// How a search ended.
struct SearchEnd {
  enum class Reason : std::uint8_t {
    /// Everything was found.
    kComplete,
    /// There is more than the query's limit.
    kOwnLimit,
    /// The directory gave no more, for reasons of its own (size or time).
    kDirectoryLimit,
    kFailed,
  };
  Reason reason = Reason::kComplete;
  /// The directory's words, when it failed.
  std::string text{};
};

[[nodiscard]] SearchEnd EndOf(const ldap::StoreStatus& status);

}  // namespace pelora::session
