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

TEST(SearchFilter, AnEmptyTextLeavesTheTypeAlone) {
  EXPECT_EQ(session::SearchFilter("(objectClass=user)", ""), "(objectClass=user)");
  EXPECT_EQ(session::SearchFilter("(objectClass=user)", " \t\u3000"), "(objectClass=user)");
}

TEST(SearchFilter, LooksForTheTextInEveryName) {
  EXPECT_EQ(session::SearchFilter("(objectClass=user)", " ada* "),
            "(&(objectClass=user)(|(name=*ada\\2a*)(displayName=*ada\\2a*)"
            "(sAMAccountName=*ada\\2a*)(userPrincipalName=*ada\\2a*)(mail=*ada\\2a*)))");
}

}  // namespace
}  // namespace pelora::test
