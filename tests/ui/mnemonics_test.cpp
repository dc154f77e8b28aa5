// SPDX-License-Identifier: Apache-2.0
// The letters that lead to controls.
#include "hosts/console/dialogs/mnemonics.h"

#include <gtest/gtest.h>

namespace pelora::test {
namespace {

using console::MnemonicOf;
using console::WithMnemonics;

QStringList Texts(std::initializer_list<const char*> texts) {
  QStringList list;
  for (const char* text : texts) list.append(QString::fromUtf8(text));
  return list;
}

TEST(Mnemonics, ATextKeepsItsOwnAndOthersGetTheBeginningOfAWord) {
  EXPECT_EQ(WithMnemonics(Texts({"Set as default", "&Select", "Delete"}), {}),
            Texts({"Set &as default", "&Select", "&Delete"}));
}

TEST(Mnemonics, NoneIsTakenTwiceOrFromTheWindow) {
  EXPECT_EQ(WithMnemonics(Texts({"&Add", "&Add", "&Add"}), {}), Texts({"&Add", "A&dd", "Add"}))
      << "the third has no letter left";
  EXPECT_EQ(WithMnemonics(Texts({"&Add"}), QStringLiteral("a")), Texts({"A&dd"}));
}

TEST(Mnemonics, WhoHasAChoiceLeavesTheLastLetterToWhoHasNone) {
  EXPECT_EQ(WithMnemonics(Texts({"ab", "a"}), {}), Texts({"a&b", "&a"}));
  EXPECT_EQ(WithMnemonics(Texts({"ab", "bc", "a"}), {}), Texts({"a&b", "b&c", "&a"}));
}

TEST(Mnemonics, AnAmpersandOfTheTextStays) {
  EXPECT_EQ(WithMnemonics(Texts({"Rooms && more"}), {}), Texts({"&Rooms && more"}));
  EXPECT_EQ(MnemonicOf(QStringLiteral("Rooms && &more")), QLatin1Char('M'));
  EXPECT_TRUE(MnemonicOf(QStringLiteral("Rooms && more")).isNull());
}

TEST(Mnemonics, ATextWithoutLettersHasNone) {
  EXPECT_EQ(WithMnemonics(Texts({"...", ""}), {}), Texts({"...", ""}));
}

}  // namespace
}  // namespace pelora::test
