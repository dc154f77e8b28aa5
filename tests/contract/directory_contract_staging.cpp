// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "tests/contract/directory_contract.h"
#include "tests/support/variant_text.h"

namespace pelora::contract {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST_P(DirectoryContract, StagingIsSeenOnTheObjectAloneUntilItIsCommitted) {
  const Ref<IADs> user = BindUserWith({{"peloraAccount", {"0"}}});
  ASSERT_TRUE(user);
  const Ref<IADs> other = Bind(kUser);
  ASSERT_EQ(user->Put("peloraAccount", Variant::Integer(1)), S_OK);
  EXPECT_EQ(ValueOf(*user, "peloraAccount"), Variant::Integer(1));
  EXPECT_EQ(ValueOf(*other, "peloraAccount"), Variant::Integer(0));
  EXPECT_THAT(StoredOnUser("peloraAccount"), ElementsAre("0"));
  ASSERT_EQ(user->SetInfo(), S_OK);
  EXPECT_THAT(StoredOnUser("peloraAccount"), ElementsAre("1"));
}

TEST_P(DirectoryContract, PutReplacesAllValues) {
  const Ref<IADs> user = BindUserWith({{"otherMailbox", {"a@example.test", "b@example.test"}},
                                       {"peloraEnabledFeatures", {"imap"}}});
  ASSERT_TRUE(user);
  ASSERT_EQ(user->Put("otherMailbox", Variant::String("c@example.test")), S_OK);
  ASSERT_EQ(user->Put("peloraEnabledFeatures", Variant::StringArray({"pop3", "archiver"})), S_OK);
  EXPECT_EQ(ValueOf(*user, "otherMailbox"), Variant::String("c@example.test"));
  EXPECT_THAT(StringsOf(ValueOf(*user, "peloraEnabledFeatures")), ElementsAre("archiver", "pop3"));
  ASSERT_EQ(user->SetInfo(), S_OK);
  EXPECT_THAT(StoredOnUser("otherMailbox"), ElementsAre("c@example.test"));
  EXPECT_THAT(StoredOnUser("peloraEnabledFeatures"), ElementsAre("archiver", "pop3"));
}

TEST_P(DirectoryContract, AnArrayOfOneValueReadsAsThatValue) {
  const Ref<IADs> user = BindUserWith({});
  ASSERT_TRUE(user);
  ASSERT_EQ(user->Put("otherMailbox", Variant::StringArray({"a@example.test"})), S_OK);
  EXPECT_EQ(ValueOf(*user, "otherMailbox"), Variant::String("a@example.test"));
}

TEST_P(DirectoryContract, AnEmptyArrayRemovesTheAttribute) {
  const Ref<IADs> user = BindUserWith({{"otherMailbox", {"a@example.test", "b@example.test"}}});
  ASSERT_TRUE(user);
  ASSERT_EQ(user->Put("otherMailbox", Variant::Array({})), S_OK);
  Variant value;
  EXPECT_EQ(user->Get("otherMailbox", value), E_ADS_PROPERTY_NOT_FOUND);
  ASSERT_EQ(user->SetInfo(), S_OK);
  EXPECT_THAT(StoredOnUser("otherMailbox"), IsEmpty());
  EXPECT_EQ(user->Get("otherMailbox", value), E_ADS_PROPERTY_NOT_FOUND);
}

TEST_P(DirectoryContract, ClearRemovesTheAttributeWhateverTheValue) {
  const Ref<IADs> user = BindUserWith({{"peloraQuotaHard", {"5"}}, {"mail", {"ada@example.test"}}});
  ASSERT_TRUE(user);
  ASSERT_EQ(user->PutEx(ADS_PROPERTY_CLEAR, "peloraQuotaHard", Variant()), S_OK);
  ASSERT_EQ(user->PutEx(ADS_PROPERTY_CLEAR, "mail", Variant::Integer(4)), S_OK);
  // Of an attribute that is not there it does no harm.
  ASSERT_EQ(user->PutEx(ADS_PROPERTY_CLEAR, "description", Variant::String("x")), S_OK);
  Variant value;
  EXPECT_EQ(user->Get("peloraQuotaHard", value), E_ADS_PROPERTY_NOT_FOUND);
  ASSERT_EQ(user->SetInfo(), S_OK);
  EXPECT_THAT(StoredOnUser("peloraQuotaHard"), IsEmpty());
  EXPECT_THAT(StoredOnUser("mail"), IsEmpty());
}

TEST_P(DirectoryContract, UpdateIsPut) {
  const Ref<IADs> user = BindUserWith({{"otherMailbox", {"a@example.test"}}});
  ASSERT_TRUE(user);
  const Variant values = Variant::StringArray({"b@example.test", "c@example.test"});
  ASSERT_EQ(user->PutEx(ADS_PROPERTY_UPDATE, "otherMailbox", values), S_OK);
  ASSERT_EQ(user->PutEx(ADS_PROPERTY_UPDATE, "mail", Variant::StringArray({"m@example.test"})),
            S_OK);
  ASSERT_EQ(user->SetInfo(), S_OK);
  EXPECT_THAT(StoredOnUser("otherMailbox"), ElementsAre("b@example.test", "c@example.test"));
  EXPECT_THAT(StoredOnUser("mail"), ElementsAre("m@example.test"));
}

TEST_P(DirectoryContract, AppendAddsWhatIsNotThere) {
  const Ref<IADs> user = BindUserWith({{"otherMailbox", {"a@example.test", "b@example.test"}}});
  ASSERT_TRUE(user);
  const Variant values = Variant::StringArray({"b@example.test", "c@example.test"});
  ASSERT_EQ(user->PutEx(ADS_PROPERTY_APPEND, "otherMailbox", values), S_OK);
  ASSERT_EQ(user->SetInfo(), S_OK);
  EXPECT_THAT(StoredOnUser("otherMailbox"),
              ElementsAre("a@example.test", "b@example.test", "c@example.test"));
}

TEST_P(DirectoryContract, DeleteTakesAwayWhatIsThere) {
  const Ref<IADs> user = BindUserWith({{"otherMailbox", {"a@example.test", "b@example.test"}}});
  ASSERT_TRUE(user);
  const Variant values = Variant::StringArray({"b@example.test", "c@example.test"});
  ASSERT_EQ(user->PutEx(ADS_PROPERTY_DELETE, "otherMailbox", values), S_OK);
  ASSERT_EQ(
      user->PutEx(ADS_PROPERTY_DELETE, "peloraEnabledFeatures", Variant::StringArray({"imap"})),
      S_OK);
  ASSERT_EQ(user->SetInfo(), S_OK);
  EXPECT_THAT(StoredOnUser("otherMailbox"), ElementsAre("a@example.test"));
  EXPECT_THAT(StoredOnUser("peloraEnabledFeatures"), IsEmpty());
}

TEST_P(DirectoryContract, AfterAppendAndDeleteTheMergedValuesAreRead) {
  const Ref<IADs> user = BindUserWith({{"otherMailbox", {"a@example.test"}},
                                       {"peloraEnabledFeatures", {"imap", "pop3"}},
                                       {"peloraDisabledFeatures", {"imap"}}});
  ASSERT_TRUE(user);
  EXPECT_EQ(ValueOf(*user, "otherMailbox"), Variant::String("a@example.test"));
  ASSERT_EQ(
      user->PutEx(ADS_PROPERTY_APPEND, "otherMailbox", Variant::StringArray({"b@example.test"})),
      S_OK);
  ASSERT_EQ(
      user->PutEx(ADS_PROPERTY_DELETE, "peloraEnabledFeatures", Variant::StringArray({"imap"})),
      S_OK);
  ASSERT_EQ(
      user->PutEx(ADS_PROPERTY_DELETE, "peloraDisabledFeatures", Variant::StringArray({"imap"})),
      S_OK);
  ASSERT_EQ(user->SetInfo(), S_OK);
  EXPECT_THAT(StringsOf(ValueOf(*user, "otherMailbox")),
              ElementsAre("a@example.test", "b@example.test"));
  EXPECT_EQ(ValueOf(*user, "peloraEnabledFeatures"), Variant::String("pop3"));
  Variant value;
  EXPECT_EQ(user->Get("peloraDisabledFeatures", value), E_ADS_PROPERTY_NOT_FOUND);
}

TEST_P(DirectoryContract, StagingAgainReplacesWhatWasStaged) {
  const Ref<IADs> user = BindUserWith({{"otherMailbox", {"a@example.test"}},
                                       {"mail", {"old@example.test"}},
                                       {"description", {"old"}}});
  ASSERT_TRUE(user);
  ASSERT_EQ(
      user->PutEx(ADS_PROPERTY_APPEND, "otherMailbox", Variant::StringArray({"b@example.test"})),
      S_OK);
  ASSERT_EQ(
      user->PutEx(ADS_PROPERTY_DELETE, "otherMailbox", Variant::StringArray({"a@example.test"})),
      S_OK);
  ASSERT_EQ(user->PutEx(ADS_PROPERTY_CLEAR, "mail", Variant()), S_OK);
  ASSERT_EQ(user->Put("mail", Variant::String("new@example.test")), S_OK);
  ASSERT_EQ(user->Put("description", Variant::String("new")), S_OK);
  ASSERT_EQ(user->PutEx(ADS_PROPERTY_CLEAR, "description", Variant()), S_OK);
  ASSERT_EQ(user->SetInfo(), S_OK);
  EXPECT_THAT(StoredOnUser("otherMailbox"), IsEmpty());
  EXPECT_THAT(StoredOnUser("mail"), ElementsAre("new@example.test"));
  EXPECT_THAT(StoredOnUser("description"), IsEmpty());
}

TEST_P(DirectoryContract, AValueThatDoesNotFitIsNotStaged) {
  const Ref<IADs> user = BindUserWith({{"peloraQuotaHard", {"5"}}, {"mail", {"m@example.test"}}});
  ASSERT_TRUE(user);
  const Variant unfit_integers[] = {Variant::String("abc"),
                                    Variant::String("12abc"),
                                    Variant::String(""),
                                    Variant::String("2147483648"),
                                    Variant::String("4294967301"),
                                    Variant::String("-2147483649"),
                                    Variant::OtherType(VT_DATE),
                                    Variant(),
                                    Variant::Array({Variant::Integer(1), Variant::String("x")})};
  for (const Variant& value : unfit_integers) {
    EXPECT_EQ(user->Put("peloraQuotaHard", value), E_ADS_CANT_CONVERT_DATATYPE) << ToText(value);
    EXPECT_EQ(user->PutEx(ADS_PROPERTY_UPDATE, "peloraQuotaHard", value),
              E_ADS_CANT_CONVERT_DATATYPE)
        << ToText(value);
  }
  const Variant unfit_strings[] = {Variant(), Variant::OtherType(VT_DISPATCH),
                                   Variant::Array({Variant()}),
                                   Variant::Array({Variant::StringArray({"nested"})})};
  for (const Variant& value : unfit_strings) {
    EXPECT_EQ(user->Put("mail", value), E_ADS_CANT_CONVERT_DATATYPE) << ToText(value);
  }
  EXPECT_EQ(ValueOf(*user, "peloraQuotaHard"), Variant::Integer(5));
  EXPECT_EQ(user->SetInfo(), S_OK);
  EXPECT_THAT(StoredOnUser("peloraQuotaHard"), ElementsAre("5"));
  EXPECT_THAT(StoredOnUser("mail"), ElementsAre("m@example.test"));
}

TEST_P(DirectoryContract, AnAttributeThatTheSchemaDoesNotKnowIsNotStaged) {
  const Ref<IADs> user = BindUserWith({});
  ASSERT_TRUE(user);
  EXPECT_EQ(user->Put("noSuchAttribute", Variant::String("x")), E_ADS_CANT_CONVERT_DATATYPE);
  EXPECT_EQ(user->PutEx(ADS_PROPERTY_CLEAR, "noSuchAttribute", Variant()),
            E_ADS_CANT_CONVERT_DATATYPE);
  Variant value;
  EXPECT_EQ(user->Get("noSuchAttribute", value), E_ADS_PROPERTY_NOT_FOUND);
  EXPECT_EQ(user->SetInfo(), S_OK);
}

TEST_P(DirectoryContract, AnotherControlIsABadParameter) {
  const Ref<IADs> user = BindUserWith({{"otherMailbox", {"a@example.test"}}});
  ASSERT_TRUE(user);
  for (const std::int32_t control : {-1, 0, 5, 1000}) {
    EXPECT_EQ(user->PutEx(control, "otherMailbox", Variant::StringArray({"b@example.test"})),
              E_ADS_BAD_PARAMETER)
        << control;
  }
  EXPECT_EQ(user->SetInfo(), S_OK);
  EXPECT_THAT(StoredOnUser("otherMailbox"), ElementsAre("a@example.test"));
}

}  // namespace
}  // namespace pelora::contract
