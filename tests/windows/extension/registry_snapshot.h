// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <string>

#include "tests/support/fake_directory_state.h"

namespace pelora::windows::test {

/// Names compare without case, as in the registry.
using NoCaseLess = pelora::testing::NoCaseLess;
/// Values of a key by name; the default value stands under the empty name. A value that is no
/// string stands with its type: "type 4".
using SnapshotValues = std::map<std::string, std::string, NoCaseLess>;
/// Keys by path: below the classes root as they are named there, others from `HKCU` or `HKLM` on.
using Snapshot = std::map<std::string, SnapshotValues, NoCaseLess>;

/// Everything that a module might leave in the registry: the classes root, the user's part and the
/// machine's software, apart from keys that are other names of keys.
[[nodiscard]] Snapshot TakeSnapshot();

/// What is in `after` and was not, or not so, in `before`. A key that was there before stands with
/// its new or changed values only.
[[nodiscard]] Snapshot Difference(const Snapshot& before, const Snapshot& after);

}  // namespace pelora::windows::test
