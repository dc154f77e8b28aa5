// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "hosts/ldap/network/network_session.h"
#include "tests/bench/bench_table.h"

namespace pelora::lab {

/// What can be counted, in the program's words for it.
inline constexpr const char* kOpenTab = "open";
inline constexpr const char* kApplyTab = "apply";
inline constexpr const char* kListObjects = "list";

/// Something that a program does once it has signed in and knows the users.
struct CountedWork {
  std::string work;
  std::string container;
  /// So many of the users right below the container; 0: all of them.
  std::size_t users = 0;
};

/// Counts what is asked, answered, and requested of the memory for some work, and nothing that came
/// before it.
using WorkCounter = std::function<Counts(const CountedWork& work)>;

/// Counts in another run of the program `itself`, which hands what follows `kCountArgument` to
/// `CountWork`.
[[nodiscard]] WorkCounter CountIn(std::string itself);
inline constexpr const char* kCountArgument = "--count";

/// Makes some work ready, and returns what does it.
using WorkPreparer =
    std::function<std::function<void()>(ldap::NetworkSession& session, const CountedWork& work)>;
/// The other side of `CountIn`: does what the arguments name, twice, and prints what it took.
/// Throws when nobody counts this program's requests for memory.
void CountWork(const std::vector<std::string>& arguments, const WorkPreparer& prepare);

}  // namespace pelora::lab
