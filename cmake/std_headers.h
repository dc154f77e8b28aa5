// SPDX-License-Identifier: Apache-2.0
/// @file
/// What nearly every source includes of the standard library, compiled once for all of them.
///
/// Reading these headers takes a third of the time that a source takes. The build puts them before
/// each; a source still includes what it uses.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>
