// SPDX-License-Identifier: Apache-2.0
#include "directory/utf.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace pelora {
namespace {

using namespace std::string_literals;

struct Pair {
  std::u16string wide;
  std::string narrow;
};

const std::array<Pair, 7> kPairs = {{
    {u"", ""},
    {u"Ada", "Ada"},
    {u"J\u00FCrgen \u0394\u03AD\u03B4\u03B5\u03C2",
     "J\xC3\xBCrgen \xCE\x94\xCE\xAD\xCE\xB4\xCE\xB5\xCF\x82"},
    {u"\u4E2D\uFFFD", "\xE4\xB8\xAD\xEF\xBF\xBD"},
    {u"\U0001F4E7", "\xF0\x9F\x93\xA7"},
    // Half a surrogate pair, of either kind and in the wrong order: kept as it is.
    {std::u16string{u'a', char16_t{0xD83D}, u'b'},
     "a\xED\xA0\xBD"
     "b"},
    {std::u16string{char16_t{0xDCE7}, char16_t{0xD83D}}, "\xED\xB3\xA7\xED\xA0\xBD"},
}};

TEST(Utf, BothWaysGiveTheSameText) {
  for (const Pair& pair : kPairs) {
    EXPECT_EQ(ToUtf8(pair.wide), pair.narrow);
    EXPECT_EQ(ToUtf16(pair.narrow), pair.wide) << pair.narrow;
  }
}

TEST(Utf, EveryCodeUnitSurvivesTheWayThereAndBack) {
  for (std::uint32_t unit = 0; unit <= 0xFFFF; ++unit) {
    const std::u16string text{u'x', static_cast<char16_t>(unit), u'y'};
    ASSERT_EQ(ToUtf16(ToUtf8(text)), text) << std::hex << unit;
  }
}

TEST(Utf, BytesOfNoSequenceBecomeReplacementCharacters) {
  const std::u16string replacement = u"\uFFFD";
  EXPECT_EQ(ToUtf16("a\xFF"
                    "b"),
            u"a\uFFFDb");
  EXPECT_EQ(ToUtf16("\x80"), replacement);
  EXPECT_EQ(ToUtf16("\xC3"), replacement) << "cut short";
  EXPECT_EQ(ToUtf16("\xE4\xB8"), replacement + replacement) << "cut short";
  EXPECT_EQ(ToUtf16("\xC0\xAF"), replacement + replacement) << "longer than needed";
  EXPECT_EQ(ToUtf16("\xE0\x80\xAF"), replacement + replacement + replacement);
  EXPECT_EQ(ToUtf16("\xF4\x90\x80\x80"), std::u16string(4, u'\uFFFD')) << "beyond Unicode";
  EXPECT_EQ(ToUtf16("\xC3"
                    "A"),
            u"\uFFFDA")
      << "the next character is not swallowed";
}

TEST(Utf, ZeroInsideATextIsACharacterLikeOthers) {
  EXPECT_EQ(ToUtf8(u"a\0b"s), "a\0b"s);
  EXPECT_EQ(ToUtf16("a\0b"s), u"a\0b"s);
}

TEST(Utf, TheFirstCharactersAreCountedAsThePlatformCounts) {
  EXPECT_EQ(FirstCharacters("", 2), "");
  EXPECT_EQ(FirstCharacters("ab", 0), "");
  EXPECT_EQ(FirstCharacters("ab", 2), "ab");
  EXPECT_EQ(FirstCharacters("abc", 2), "ab");
  EXPECT_EQ(FirstCharacters("äöü", 2), "äö");
  EXPECT_EQ(FirstCharacters("漢字漢", 2), "漢字");
  EXPECT_EQ(FirstCharacters("a🖥b", 3), "a🖥") << "a character of two units counts twice";
  EXPECT_EQ(FirstCharacters("a🖥b", 2), "a") << "and is not cut in two";
  EXPECT_EQ(FirstCharacters("🖥", 1), "");
}

}  // namespace
}  // namespace pelora
