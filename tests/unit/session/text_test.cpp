// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/text.h"

#include <gtest/gtest.h>

#include "directory/error_text.h"
#include "hosts/resources/mnemonic.h"

namespace pelora::test {
namespace {

TEST(Trimmed, TakesBlanksOfEveryAlphabetOffTheEnds) {
  EXPECT_EQ(session::Trimmed(" \t\n Zoë Ünal\u00A0\u3000\r"), "Zoë Ünal");
  EXPECT_EQ(session::Trimmed("x"), "x");
  EXPECT_EQ(session::Trimmed(" \u2003 "), "");
  EXPECT_EQ(session::Trimmed(""), "");
}

TEST(CharacterCount, CountsAsAnEditControlDoes) {
  EXPECT_EQ(session::CharacterCount("Zoë"), 3U);
  EXPECT_EQ(session::CharacterCount("😀"), 2U);
}

TEST(WithoutMnemonic, LeavesWhatIsReadOut) {
  EXPECT_EQ(resources::WithoutMnemonic("&User"), "User");
  EXPECT_EQ(resources::WithoutMnemonic("One && tw&o"), "One & two");
  EXPECT_EQ(resources::WithoutMnemonic("End&"), "End");
}

TEST(CodeText, IsHexadecimalInCapitals) {
  EXPECT_EQ(CodeText(E_ACCESSDENIED), "0X80070005");
  EXPECT_EQ(CodeText(0x5011), "0X5011");
}

}  // namespace
}  // namespace pelora::test
