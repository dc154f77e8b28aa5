// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "hosts/ldap/directory_store.h"
#include "tests/harness/history.h"

namespace pelora::testing {

/// Where several writers work.
struct WritersPlace {
  /// A connection of its own for each of them.
  std::function<std::unique_ptr<ldap::IDirectoryStore>()> open;
  /// Distinguished names of the users that they change.
  std::vector<std::string> users;
};

/// What several writers did, and how often it was answered how.
struct WritersDeeds {
  History history;
  std::map<Answer, std::size_t> answers;
};

/// Two consoles' sheets and a third program change the users at random, so many times each, at the
/// same time, each over a connection that fails now and then. What is written down of it begins and
/// ends with what the directory holds. What cannot be done at all throws.
[[nodiscard]] WritersDeeds PlayWriters(const WritersPlace& place, std::size_t rounds,
                                       unsigned seed);

/// What came of it, in one line: "60 each, 149 accepted, ...".
[[nodiscard]] std::string TextOf(const WritersDeeds& deeds, std::size_t rounds);

}  // namespace pelora::testing
