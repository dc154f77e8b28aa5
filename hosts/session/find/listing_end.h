// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "hosts/session/search_end.h"

namespace pelora::session {

/// How a listing ended.
struct ListingEnd {
  SearchEnd end{};
  /// Items of a pasted list for which there is no object, as they were given.
  std::vector<std::string> not_found{};
  /// How many items of a pasted list were not looked for.
  std::size_t left_out = 0;
};

}  // namespace pelora::session
