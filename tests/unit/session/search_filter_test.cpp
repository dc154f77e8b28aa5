// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/search_filter.h"

#include <gtest/gtest.h>

namespace pelora::test {
namespace {

TEST(EscapeFilterValue, TakesTheFilterCharactersForText) {
  EXPECT_EQ(session::EscapeFilterValue("a*b(c)d\\e"), "a\\2ab\\28c\\29d\\5ce");
  EXPECT_EQ(session::EscapeFilterValue(std::string_view("a\0b", 3)), "a\\00b");
  EXPECT_EQ(session::EscapeFilterValue("Jürgen & =!|<>"), "Jürgen & =!|<>");
}

}  // namespace
}  // namespace pelora::test
