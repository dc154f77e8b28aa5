// SPDX-License-Identifier: Apache-2.0
#include "tests/contract/text_service_contract.h"

namespace pelora::contract {

TEST_P(TextServiceContract, LettersOfEveryScriptGetTheirCapital) {
  EXPECT_EQ(UpperCase("Ada.Brandt-01@example.test"), "ADA.BRANDT-01@EXAMPLE.TEST");
  EXPECT_EQ(UpperCase("jörg éàø ÿ ç"), "JÖRG ÉÀØ Ÿ Ç");
  EXPECT_EQ(UpperCase("ελένη"), "ΕΛΈΝΗ");
  EXPECT_EQ(UpperCase("щука ѓ"), "ЩУКА Ѓ");
  EXPECT_EQ(UpperCase("ἀ ա ḁ"), "Ἀ Ա Ḁ");
  EXPECT_EQ(UpperCase("a\U00010428z"), "A\U00010400Z") << "two units in UTF-16";
}

TEST_P(TextServiceContract, LettersWithoutACapitalStay) {
  EXPECT_EQ(UpperCase("straße"), "STRAßE");
  EXPECT_EQ(UpperCase("ŉ ﬁ"), "ŉ ﬁ");
}

TEST_P(TextServiceContract, WhateverIsNoLetterStays) {
  EXPECT_EQ(UpperCase(""), "");
  EXPECT_EQ(UpperCase(" 1@\t漢字 \U0001F4EE"), " 1@\t漢字 \U0001F4EE");
}

TEST_P(TextServiceContract, CapitalsStay) { EXPECT_EQ(UpperCase("GRÖSSE Я"), "GRÖSSE Я"); }

}  // namespace pelora::contract
