// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "hosts/session/typed/typed_address.h"
#include "hosts/session/typed/typed_query.h"

namespace pelora::session {
namespace {

TEST(TypedAddress, IsFineAsMostAre) {
  for (const char* text : {"", "ada@example.org", "a.b+c@mail.example.org", "o'hara@example.org"}) {
    EXPECT_EQ(JudgeAddress(text).verdict, Verdict::kFine) << text;
    EXPECT_EQ(JudgeAddress(text).sentence, "") << text;
  }
}

TEST(TypedAddress, IsOddWherePossibleAndSeldomMeant) {
  for (const char* text : {"x@y", "ada@[192.0.2.1]", "\"ada larsen\"@example.org",
                           "krämer@example.org", "ada@größe.example"}) {
    EXPECT_EQ(JudgeAddress(text).verdict, Verdict::kOdd) << text;
    EXPECT_NE(JudgeAddress(text).sentence, "") << text;
  }
}

TEST(TypedAddress, IsWrongWhereItIsNone) {
  for (const char* text :
       {"anna", " ", "a b@example.org", " ada@example.org", "a@b@c", "@example.org", "ada@",
        "a..b@example.org", "ada@-example.org", ".ada@example.org"}) {
    EXPECT_EQ(JudgeAddress(text).verdict, Verdict::kWrong) << text;
  }
  EXPECT_EQ(JudgeAddress("anna").sentence, "An address has an \"@\": name@example.org.");
  EXPECT_EQ(JudgeAddress("a@b@c").sentence, "An address has one \"@\" only.");
  EXPECT_EQ(JudgeAddress(" a@b.c").sentence, "An address has no blanks.");
}

TEST(TypedQuery, IsFineAsAFilter) {
  for (const char* text : {"", "(mail=*)", "(&(a=b)(!(c=d)))"}) {
    EXPECT_EQ(JudgeQuery(text).verdict, Verdict::kFine) << text;
  }
}

TEST(TypedQuery, SaysWhereItIsWrongAndWhatIsMissing) {
  const auto judged = [](const char* text) {
    const Judgement judgement = JudgeQuery(text);
    EXPECT_EQ(judgement.verdict, Verdict::kWrong) << text;
    return judgement.sentence;
  };
  EXPECT_EQ(judged("(&(mail=*)(sn=*)"), "Character 17: a closing parenthesis is missing.");
  EXPECT_EQ(judged("(mail=*"), "Character 8: a closing parenthesis is missing.");
  EXPECT_EQ(judged("mail=*"), "Character 1: an opening parenthesis is missing.");
  EXPECT_EQ(judged("(cn=ü)x"), "Character 7: nothing may stand behind the filter.");
  EXPECT_EQ(judged("(mail)"), "Character 2: a condition is ATTRIBUTE=VALUE.");
  EXPECT_EQ(judged("(mail)(cn=a)"), "Character 2: a condition is ATTRIBUTE=VALUE.");
  EXPECT_EQ(judged("()"), "Character 2: a condition is missing.");
  EXPECT_EQ(judged("((cn=a))"), "Character 2: a condition is missing.");
  EXPECT_EQ(judged("(c n=a)"), "Character 2: this is no name of an attribute.");
  EXPECT_EQ(judged("(cn=a\\2)"), "Character 6: two hexadecimal digits follow a backslash.");
  EXPECT_EQ(judged("(cn=a(b)"), "Character 6: in a value this is written \\28 or \\00.");
  EXPECT_EQ(judged("(cn>=a*)"), "Character 7: in this value a star is written \\2a.");
}

}  // namespace
}  // namespace pelora::session
