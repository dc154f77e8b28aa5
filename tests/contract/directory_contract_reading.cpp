// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "tests/contract/directory_contract.h"
#include "tests/support/variant_text.h"

namespace pelora::contract {
namespace {

using ::testing::ElementsAre;

TEST_P(DirectoryContract, GivesTheTypeThatTheSchemaNames) {
  const Ref<IADs> user = BindUserWith({{"peloraQuotaHard", {"-17"}},
                                       {"mail", {"ada@example.test"}},
                                       {"peloraSendAsPrivilege", {Directory().Container()}},
                                       {"showInAdvancedViewOnly", {"TRUE"}}});
  ASSERT_TRUE(user);
  EXPECT_EQ(ValueOf(*user, "peloraQuotaHard"), Variant::Integer(-17));
  EXPECT_EQ(ValueOf(*user, "mail"), Variant::String("ada@example.test"));
  EXPECT_EQ(ValueOf(*user, "peloraSendAsPrivilege"), Variant::String(Directory().Container()));
  EXPECT_EQ(ValueOf(*user, "showInAdvancedViewOnly").type(), VT_BOOL);
}

TEST_P(DirectoryContract, GivesTheWholeRangeOfIntegers) {
  const Ref<IADs> user = BindUserWith({{"peloraQuotaSoft", {"-2147483648"}},
                                       {"peloraQuotaHard", {"2147483647"}},
                                       {"peloraQuotaWarn", {"0"}}});
  ASSERT_TRUE(user);
  EXPECT_EQ(ValueOf(*user, "peloraQuotaSoft"), Variant::Integer(-2147483647 - 1));
  EXPECT_EQ(ValueOf(*user, "peloraQuotaHard"), Variant::Integer(2147483647));
  EXPECT_EQ(ValueOf(*user, "peloraQuotaWarn"), Variant::Integer(0));
}

TEST_P(DirectoryContract, GivesTextUnchanged) {
  const std::string text = "Größe ΆΒΓ Щ 林 \xF0\x9F\x8C\xB3 e\xCC\x81 \"quoted\", \\back/slash;";
  const Ref<IADs> user = BindUserWith({{"description", {text}}});
  ASSERT_TRUE(user);
  EXPECT_EQ(ValueOf(*user, "description"), Variant::String(text));
}

TEST_P(DirectoryContract, TheNumberOfValuesDecidesOnTheShape) {
  const Ref<IADs> user = BindUserWith({{"otherMailbox", {"one@example.test"}},
                                       {"peloraEnabledFeatures", {"imap", "pop3", "archiver"}}});
  ASSERT_TRUE(user);
  EXPECT_EQ(ValueOf(*user, "otherMailbox"), Variant::String("one@example.test"));
  const Variant several = ValueOf(*user, "peloraEnabledFeatures");
  EXPECT_EQ(several.type(), kVariantArray);
  EXPECT_THAT(StringsOf(several), ElementsAre("archiver", "imap", "pop3"));
}

TEST_P(DirectoryContract, AnAttributeWithoutValuesIsNotFound) {
  const Ref<IADs> user = BindUserWith({{"mail", {"ada@example.test"}}});
  ASSERT_TRUE(user);
  for (const char* const name : {"peloraAccount", "otherMailbox", "noSuchAttribute", ""}) {
    Variant value = Variant::Integer(1);
    EXPECT_EQ(user->Get(name, value), E_ADS_PROPERTY_NOT_FOUND) << name;
    EXPECT_TRUE(value.IsEmpty()) << name;
  }
}

TEST_P(DirectoryContract, NamesCompareWithoutCase) {
  const Ref<IADs> user = BindUserWith({{"peloraAccount", {"1"}}});
  ASSERT_TRUE(user);
  EXPECT_EQ(ValueOf(*user, "PELORAaccount"), Variant::Integer(1));
  ASSERT_EQ(user->Put("PeloraHIDDEN", Variant::Integer(1)), S_OK);
  EXPECT_EQ(ValueOf(*user, "peloraHidden"), Variant::Integer(1));
  ASSERT_EQ(user->SetInfo(), S_OK);
  EXPECT_EQ(ValueOf(*user, "pelorahidden"), Variant::Integer(1));
  EXPECT_THAT(StoredOnUser("peloraHidden"), ElementsAre("1"));
}

TEST_P(DirectoryContract, TheObjectIsReadOnce) {
  const Ref<IADs> user = BindUserWith({{"mail", {"ada@example.test"}}});
  ASSERT_TRUE(user);
  SetOnUser("mail", {"before@example.test"});
  EXPECT_EQ(ValueOf(*user, "mail"), Variant::String("before@example.test"));

  SetOnUser("mail", {"after@example.test"});
  SetOnUser("description", {"added later"});
  EXPECT_EQ(ValueOf(*user, "mail"), Variant::String("before@example.test"));
  Variant value;
  EXPECT_EQ(user->Get("description", value), E_ADS_PROPERTY_NOT_FOUND);

  const Ref<IADs> fresh = Bind(kUser);
  EXPECT_EQ(ValueOf(*fresh, "mail"), Variant::String("after@example.test"));
  EXPECT_EQ(ValueOf(*fresh, "description"), Variant::String("added later"));
}

TEST_P(DirectoryContract, WhatIsStagedSurvivesTheReading) {
  const Ref<IADs> user = BindUserWith({{"mail", {"ada@example.test"}}, {"peloraAccount", {"1"}}});
  ASSERT_TRUE(user);
  ASSERT_EQ(user->Put("mail", Variant::String("staged@example.test")), S_OK);
  EXPECT_EQ(ValueOf(*user, "peloraAccount"), Variant::Integer(1));
  EXPECT_EQ(ValueOf(*user, "mail"), Variant::String("staged@example.test"));
}

TEST_P(DirectoryContract, ReadingAnObjectThatIsGoneFails) {
  const Ref<IADs> user = BindUserWith({{"mail", {"ada@example.test"}}});
  ASSERT_TRUE(user);
  Directory().Remove(DnOf(kUser));
  Variant value = Variant::Integer(1);
  EXPECT_EQ(user->Get("mail", value), kNoSuchObject);
  EXPECT_TRUE(value.IsEmpty());
}

}  // namespace
}  // namespace pelora::contract
