// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "tests/contract/directory_contract.h"
#include "tests/support/variant_text.h"

namespace pelora::contract {
namespace {

using ::testing::ElementsAre;

constexpr auto kInvalidSyntax = static_cast<HRESULT>(0x8007200BU);

/// Two values, where one is allowed: accepted by the object, refused by the directory.
Variant TwoAddresses() { return Variant::StringArray({"a@example.test", "b@example.test"}); }

TEST_P(DirectoryContract, WithNothingStagedNothingIsSent) {
  const Ref<IADs> user = BindUserWith({{"mail", {"ada@example.test"}}});
  ASSERT_TRUE(user);
  // A request would fail now.
  Directory().Remove(DnOf(kUser));
  EXPECT_EQ(user->SetInfo(), S_OK);
}

TEST_P(DirectoryContract, ACommitChangesWhatWasStagedAndNothingElse) {
  const Ref<IADs> user = BindUserWith({{"mail", {"ada@example.test"}},
                                       {"peloraAccount", {"0"}},
                                       {"otherMailbox", {"a@example.test", "b@example.test"}},
                                       {"peloraQuotaHard", {"5"}}});
  ASSERT_TRUE(user);
  StoredAttributes expected = Directory().Stored(DnOf(kUser));
  ASSERT_EQ(user->Put("peloraAccount", Variant::Integer(1)), S_OK);
  ASSERT_EQ(user->Put("peloraHidden", Variant::Integer(1)), S_OK);
  ASSERT_EQ(user->PutEx(ADS_PROPERTY_CLEAR, "peloraQuotaHard", Variant()), S_OK);
  ASSERT_EQ(user->SetInfo(), S_OK);
  expected["peloraAccount"] = {"1"};
  expected["peloraHidden"] = {"1"};
  expected.erase("peloraQuotaHard");
  EXPECT_EQ(Directory().Stored(DnOf(kUser)), expected);
}

TEST_P(DirectoryContract, ACommitTakesEffectWholeOrNotAtAll) {
  const Ref<IADs> user = BindUserWith({{"mail", {"ada@example.test"}}, {"peloraAccount", {"0"}}});
  ASSERT_TRUE(user);
  const StoredAttributes before = Directory().Stored(DnOf(kUser));
  ASSERT_EQ(user->Put("peloraAccount", Variant::Integer(1)), S_OK);
  ASSERT_EQ(user->Put("mail", TwoAddresses()), S_OK);
  ASSERT_EQ(user->Put("peloraHidden", Variant::Integer(1)), S_OK);
  EXPECT_TRUE(FAILED(user->SetInfo()));
  EXPECT_EQ(Directory().Stored(DnOf(kUser)), before);
}

TEST_P(DirectoryContract, AfterAFailureEverythingStaysStaged) {
  const Ref<IADs> user = BindUserWith({{"mail", {"ada@example.test"}}, {"peloraAccount", {"0"}}});
  ASSERT_TRUE(user);
  ASSERT_EQ(user->Put("peloraAccount", Variant::Integer(1)), S_OK);
  ASSERT_EQ(user->Put("mail", TwoAddresses()), S_OK);
  const HRESULT failure = user->SetInfo();
  EXPECT_TRUE(FAILED(failure));
  EXPECT_EQ(ValueOf(*user, "peloraAccount"), Variant::Integer(1));
  EXPECT_EQ(ValueOf(*user, "mail").type(), kVariantArray);
  EXPECT_EQ(user->SetInfo(), failure);

  ASSERT_EQ(user->Put("mail", Variant::String("new@example.test")), S_OK);
  EXPECT_EQ(user->SetInfo(), S_OK);
  EXPECT_THAT(StoredOnUser("peloraAccount"), ElementsAre("1"));
  EXPECT_THAT(StoredOnUser("mail"), ElementsAre("new@example.test"));
}

TEST_P(DirectoryContract, AnEmptyTextIsTakenButNotCommitted) {
  const Ref<IADs> user = BindUserWith({{"mail", {"ada@example.test"}}});
  ASSERT_TRUE(user);
  ASSERT_EQ(user->Put("mail", Variant::String("")), S_OK);
  EXPECT_EQ(user->SetInfo(), kInvalidSyntax);
  EXPECT_THAT(StoredOnUser("mail"), ElementsAre("ada@example.test"));
}

TEST_P(DirectoryContract, WhatWasCommittedStaysInTheCache) {
  const Ref<IADs> user = BindUserWith({{"mail", {"ada@example.test"}}});
  ASSERT_TRUE(user);
  ASSERT_EQ(user->Put("mail", Variant::String("new@example.test")), S_OK);
  ASSERT_EQ(user->SetInfo(), S_OK);
  SetOnUser("mail", {"other@example.test"});
  EXPECT_EQ(ValueOf(*user, "mail"), Variant::String("new@example.test"));
  // Nor does reading the rest of the object replace it.
  Variant value;
  EXPECT_EQ(user->Get("description", value), E_ADS_PROPERTY_NOT_FOUND);
  EXPECT_EQ(ValueOf(*user, "mail"), Variant::String("new@example.test"));
}

TEST_P(DirectoryContract, ACommitIsSentOnce) {
  const Ref<IADs> user = BindUserWith({});
  ASSERT_TRUE(user);
  ASSERT_EQ(user->Put("mail", Variant::String("new@example.test")), S_OK);
  ASSERT_EQ(user->SetInfo(), S_OK);
  SetOnUser("mail", {"other@example.test"});
  EXPECT_EQ(user->SetInfo(), S_OK);
  ASSERT_EQ(user->Put("peloraHidden", Variant::Integer(1)), S_OK);
  EXPECT_EQ(user->SetInfo(), S_OK);
  EXPECT_THAT(StoredOnUser("mail"), ElementsAre("other@example.test"));
}

TEST_P(DirectoryContract, AnObjectThatIsGoneCannotBeCommitted) {
  const Ref<IADs> user = BindUserWith({});
  ASSERT_TRUE(user);
  ASSERT_EQ(user->Put("mail", Variant::String("new@example.test")), S_OK);
  Directory().Remove(DnOf(kUser));
  EXPECT_EQ(user->SetInfo(), kNoSuchObject);
  EXPECT_EQ(ValueOf(*user, "mail"), Variant::String("new@example.test"));
}

TEST_P(DirectoryContract, ObjectsBoundFromOnePathAreIndependent) {
  const Ref<IADs> first = BindUserWith({{"mail", {"ada@example.test"}}});
  ASSERT_TRUE(first);
  const Ref<IADs> second = Bind(kUser);
  ASSERT_EQ(first->Put("mail", Variant::String("first@example.test")), S_OK);
  ASSERT_EQ(second->Put("peloraHidden", Variant::Integer(1)), S_OK);
  ASSERT_EQ(second->SetInfo(), S_OK);
  EXPECT_THAT(StoredOnUser("mail"), ElementsAre("ada@example.test"));
  ASSERT_EQ(first->SetInfo(), S_OK);
  EXPECT_THAT(StoredOnUser("mail"), ElementsAre("first@example.test"));
  EXPECT_THAT(StoredOnUser("peloraHidden"), ElementsAre("1"));
}

}  // namespace
}  // namespace pelora::contract
