// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "hosts/ldap/ldif_lines.h"

namespace pelora::ldap {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

TEST(SplitLdif, FindsEntriesAndTheirLines) {
  const std::vector<LdifBlock> blocks = SplitLdif("\n# comment\n\ndn: a\nx: 1\n\n\n\ndn: b\ny: 2");
  ASSERT_THAT(blocks, SizeIs(2));
  EXPECT_EQ(blocks[0].line, 4U);
  EXPECT_THAT(blocks[0].lines, ElementsAre("dn: a", "x: 1"));
  EXPECT_EQ(blocks[1].line, 9U);
  EXPECT_THAT(blocks[1].lines, ElementsAre("dn: b", "y: 2"));
}

TEST(SplitLdif, UnfoldsLinesAndDropsComments) {
  const std::vector<LdifBlock> blocks =
      SplitLdif("# first\n goes on\ndn: a\n b\n  c\n# inside\n goes on\nx: 1\n 2\n");
  ASSERT_THAT(blocks, SizeIs(1));
  EXPECT_EQ(blocks[0].line, 3U);
  EXPECT_THAT(blocks[0].lines, ElementsAre("dn: ab c", "x: 12"));
}

TEST(SplitLdif, TakesLineEndsOfBothKinds) {
  const std::vector<LdifBlock> blocks = SplitLdif("dn: a\r\nx: 1\r\n 2\r\n\r\ndn: b\r\n");
  ASSERT_THAT(blocks, SizeIs(2));
  EXPECT_THAT(blocks[0].lines, ElementsAre("dn: a", "x: 12"));
  EXPECT_EQ(blocks[1].line, 5U);
}

TEST(SplitLdif, ASpaceBehindNothingStartsAnEntry) {
  const std::vector<LdifBlock> blocks = SplitLdif(" x: 1\n\n y: 2\n");
  ASSERT_THAT(blocks, SizeIs(2));
  EXPECT_THAT(blocks[0].lines, ElementsAre(" x: 1"));
}

TEST(SplitLdif, TextWithoutEntriesHasNone) {
  EXPECT_THAT(SplitLdif(""), IsEmpty());
  EXPECT_THAT(SplitLdif("\n\r\n\n"), IsEmpty());
  EXPECT_THAT(SplitLdif("# only\n# comments"), IsEmpty());
}

TEST(IsLdifValue, KnowsALineWithAValue) {
  for (const char* const line :
       {"dn: DC=x", "a:", "a:b", "a: b: c", "attr-x;option: v", "1.2.840: v",
        "a::", "a:: ", "a:: YQ==", "a::YWI=", "a::   YWJj", "@IDX: x"}) {
    EXPECT_TRUE(IsLdifValue(line)) << line;
  }
}

TEST(IsLdifValue, RefusesTheRest) {
  for (const char* const line : {"", ":", ": x", " a: b", "a", "a b: c", "ä: b", "a:< file:///x",
                                 "a:: !", "a:: YQ=", "a:: Y===", "a:: YQ==YQ==", "a:: YQ== "}) {
    EXPECT_FALSE(IsLdifValue(line)) << line;
  }
  EXPECT_FALSE(IsLdifValue(std::string_view("a: b\0c", 6)));
}

}  // namespace
}  // namespace pelora::ldap
