// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/find/find_text.h"

#include <gmock/gmock.h>

#include "hosts/session/check/search_query.h"

namespace pelora::session {
namespace {

using ::testing::ElementsAre;

std::vector<std::string> Given(const FindText& text) {
  std::vector<std::string> given;
  for (const FindText::Item& item : text.items()) {
    given.push_back((item.is_dn ? "dn " : "") + item.given);
  }
  return given;
}

TEST(TextToFind, OfOneLineIsWords) {
  EXPECT_THAT(FindText("birgit").words(), ElementsAre("birgit"));
  EXPECT_THAT(FindText(" Birgit \t Krämer \n").words(), ElementsAre("Birgit", "Krämer"));
  // A list of one is none: a name with a comma is still being typed.
  EXPECT_THAT(FindText(", Dr.").words(), ElementsAre("Dr."));
  EXPECT_THAT(FindText("Meyer,").words(), ElementsAre("Meyer"));
  EXPECT_THAT(FindText("\"Birgit Krämer\"").words(), ElementsAre("Birgit Krämer"));
  EXPECT_THAT(FindText("a@example.org").words(), ElementsAre("a@example.org"));
  EXPECT_THAT(FindText("mailto:a@example.org").words(), ElementsAre("a@example.org"));
  EXPECT_THAT(FindText("Birgit Krämer <b@example.org>").words(), ElementsAre("b@example.org"));
}

TEST(TextToFind, MayBeEmpty) {
  for (const char* text : {"", " ", "\n\n", ";", " ; ;\n", ","}) {
    EXPECT_TRUE(FindText(text).IsEmpty()) << text;
    EXPECT_EQ(FilterOfWords(FindText(text).words()), "");
  }
}

TEST(TextToFind, MayBeADistinguishedName) {
  EXPECT_THAT(Given(FindText(" cn=Ada,OU=Sales,DC=example,DC=org ")),
              ElementsAre("dn cn=Ada,OU=Sales,DC=example,DC=org"));
  EXPECT_THAT(Given(FindText("CN=A\\;B,DC=x;OU=C,DC=x")),
              ElementsAre("dn CN=A\\;B,DC=x", "dn OU=C,DC=x"));
}

TEST(TextToFind, MayBeAPastedList) {
  EXPECT_THAT(Given(FindText("ada\nb@example.org\r\nGrace Hopper\n")),
              ElementsAre("ada", "b@example.org", "Grace Hopper"));
  EXPECT_THAT(Given(FindText("ada; b@example.org ;Grace Hopper")),
              ElementsAre("ada", "b@example.org", "Grace Hopper"));
  EXPECT_THAT(Given(FindText("a@x.org, b@x.org,c@x.org")),
              ElementsAre("a@x.org", "b@x.org", "c@x.org"));
  EXPECT_THAT(Given(FindText("\"Meyer; Anna\" <a@x.org>; Bo <b@x.org>")),
              ElementsAre("a@x.org", "b@x.org"));
  EXPECT_THAT(Given(FindText("ada\nADA\nada")), ElementsAre("ada"));
}

TEST(TextToFind, KnowsFamilyNamesThatStandFirst) {
  const FindText text("Meyer, Anna");
  ASSERT_EQ(text.items().size(), 2U);
  EXPECT_THAT(text.items()[0].names, ElementsAre("Meyer", "Meyer, Anna", "Anna Meyer"));
  EXPECT_THAT(text.items()[1].names, ElementsAre("Anna", "Meyer, Anna", "Anna Meyer"));
}

TEST(TextToFind, HasABound) {
  std::string list;
  for (std::size_t at = 0; at < FindText::kMostItems + 7; ++at) list += std::to_string(at) + "\n";
  const FindText text(list);
  EXPECT_EQ(text.items().size(), FindText::kMostItems);
  EXPECT_EQ(text.left_out(), 7U);
}

TEST(TextToFind, IsNeverTakenForAFilter) {
  for (const std::string& word :
       {std::string("*"), std::string(")(objectClass=*"), std::string("a\\"), std::string("(("),
        std::string("a\0b", 3), std::string("\xFF\xFE"), std::string(5000, '*')}) {
    const std::string filter = FilterOfWords({word, "x"});
    EXPECT_FALSE(FindQueryFault(filter)) << filter;
    const std::string names = "(|" + FilterOfNames({.given = word, .names = {word}}) + ")";
    EXPECT_FALSE(FindQueryFault(names)) << names;
  }
  EXPECT_EQ(FilterOfWords({"*"}).find("**"), std::string::npos);
}

TEST(TextToFind, SurvivesWhateverIsPasted) {
  std::string hostile = "\"<,;\\";
  for (int round = 0; round < 12; ++round) hostile += hostile;
  EXPECT_LE(FindText(hostile).items().size(), FindText::kMostItems);
  EXPECT_THAT(FindText("\\").words(), ElementsAre("\\"));
  EXPECT_THAT(FindText("\"").words(), ElementsAre("\""));
  EXPECT_THAT(FindText("<>").words(), ElementsAre("<>"));
}

}  // namespace
}  // namespace pelora::session
