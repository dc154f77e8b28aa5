// SPDX-License-Identifier: Apache-2.0
/// @file
/// What nearly every test includes, compiled once for all of them.
///
/// Reading GoogleMock takes longer than compiling most tests. This header is put before every test
/// by the build; a test still includes what it uses.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>
