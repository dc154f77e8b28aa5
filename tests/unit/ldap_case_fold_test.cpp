// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "hosts/ldap/case_fold.h"

namespace pelora::ldap {
namespace {

TEST(FoldCase, MakesCapitalsInEveryAlphabet) {
  EXPECT_EQ(FoldCase("abcxyz"), "ABCXYZ");
  EXPECT_EQ(FoldCase("àöøþÿ"), "ÀÖØÞŸ");
  EXPECT_EQ(FoldCase("āłžőķ"), "ĀŁŽŐĶ");
  EXPECT_EQ(FoldCase("άέήίαβςσωόύώ"), "ΆΈΉΊΑΒΣΣΩΌΎΏ");
  EXPECT_EQ(FoldCase("абвяёђщ"), "АБВЯЁЂЩ");
  EXPECT_EQ(FoldCase("աև"), "Աև");
  EXPECT_EQ(FoldCase("ệỹ"), "ỆỸ");
}

TEST(FoldCase, LeavesTheRestAlone) {
  const std::string rest = "ABZ 0-9 .,;/\\=+<># ß × ÷ ŉ ĸ 林 美咲 \xF0\x9F\x8C\xB3";
  EXPECT_EQ(FoldCase(rest), rest);
  EXPECT_EQ(FoldCase(""), "");
}

TEST(FoldCase, IsDoneAfterOnce) {
  const std::string folded = FoldCase("Jürgen Weißflog Ελένη Щербак Łukasz");
  EXPECT_EQ(FoldCase(folded), folded);
  EXPECT_EQ(folded, "JÜRGEN WEIßFLOG ΕΛΈΝΗ ЩЕРБАК ŁUKASZ");
}

}  // namespace
}  // namespace pelora::ldap
