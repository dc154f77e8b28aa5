// SPDX-License-Identifier: Apache-2.0
#include "directory/string_set.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "tests/support/fake_directory.h"
#include "tests/support/fault_directory.h"

namespace pelora {
namespace {

using testing::DirectoryCall;
using ::testing::ElementsAre;
using testing::FakeDirectory;
using testing::FaultDirectory;
using testing::FaultPoint;
using ::testing::IsEmpty;

const std::string kAda = "LDAP://CN=Ada,DC=x";
const std::string kFeatures = "peloraEnabledFeatures";

class StringSetTest : public ::testing::Test {
 protected:
  StringSetTest() { directory_.AddObject(kAda); }

  Ref<IADs> Bind() {
    Ref<IADs> object;
    EXPECT_EQ(faulty_.ADsGetObject(kAda, IID_IADs, object), S_OK);
    directory_.ClearCalls();
    return object;
  }
  StringSet Read(const Variant& stored) {
    directory_.SetValue(kAda, kFeatures, stored);
    StringSet values = {"from before"};
    EXPECT_EQ(ReadStringSet(*Bind(), kFeatures, values), S_OK);
    return values;
  }

  FakeDirectory directory_;
  FaultDirectory faulty_{directory_};
};

TEST_F(StringSetTest, ReadsWhateverShapeTheValueHas) {
  EXPECT_THAT(Read(Variant()), IsEmpty());
  EXPECT_THAT(Read(Variant::String("imap")), ElementsAre("imap"));
  EXPECT_THAT(Read(Variant::StringArray({"pop3", "imap", "Zeta"})),
              ElementsAre("Zeta", "imap", "pop3"))
      << "ordered by bytes, capitals first";
  EXPECT_THAT(Read(Variant::Integer(7)), IsEmpty());
  EXPECT_THAT(Read(Variant::OtherType(VT_BOOL)), IsEmpty());
}

TEST_F(StringSetTest, NamesOfDeletedObjectsAreKept) {
  EXPECT_THAT(Read(Variant::StringArray({"CN=a\\0ADEL:1", "b"})),
              ElementsAre("CN=a\\0ADEL:1", "b"));
}

TEST_F(StringSetTest, AFailedReadLeavesTheSetAlone) {
  const Ref<IADs> object = Bind();
  faulty_.plan().Fail(FaultPoint::kGet, 1, E_ACCESSDENIED);
  StringSet values = {"from before"};
  EXPECT_EQ(ReadStringSet(*object, kFeatures, values), E_ACCESSDENIED);
  EXPECT_THAT(values, ElementsAre("from before"));
}

TEST_F(StringSetTest, AnElementThatIsNoStringFailsTheWholeRead) {
  directory_.SetValue(kAda, kFeatures,
                      Variant::Array({Variant::String("imap"), Variant::Integer(7)}));
  StringSet values = {"from before"};
  EXPECT_EQ(ReadStringSet(*Bind(), kFeatures, values), E_ADS_CANT_CONVERT_DATATYPE);
  EXPECT_THAT(values, ElementsAre("from before"));
}

TEST_F(StringSetTest, WritesTheShapeThatTheNumberOfValuesAsksFor) {
  const Ref<IADs> object = Bind();
  EXPECT_EQ(WriteStringSet(*object, kFeatures, {"pop3", "imap"}), S_OK);
  EXPECT_EQ(WriteStringSet(*object, kFeatures, {"imap"}), S_OK);
  EXPECT_EQ(WriteStringSet(*object, kFeatures, {}), S_OK);
  ASSERT_EQ(directory_.calls().size(), 3U);
  EXPECT_EQ(directory_.calls()[0].value, Variant::StringArray({"imap", "pop3"}));
  EXPECT_EQ(directory_.calls()[0].kind, DirectoryCall::Kind::kPut);
  EXPECT_EQ(directory_.calls()[1].value, Variant::String("imap"));
  EXPECT_EQ(directory_.calls()[1].kind, DirectoryCall::Kind::kPut);
  EXPECT_EQ(directory_.calls()[2].value, Variant());
  EXPECT_EQ(directory_.calls()[2].kind, DirectoryCall::Kind::kPutEx);
  EXPECT_EQ(directory_.calls()[2].control, ADS_PROPERTY_CLEAR);
}

TEST_F(StringSetTest, WritingStagesAndDoesNotCommit) {
  EXPECT_EQ(WriteStringSet(*Bind(), kFeatures, {"imap"}), S_OK);
  EXPECT_EQ(directory_.CountOf(DirectoryCall::Kind::kSetInfo), 0U);
  EXPECT_TRUE(directory_.Value(kAda, kFeatures).IsEmpty());
}

TEST_F(StringSetTest, AFailedWriteIsReturned) {
  const Ref<IADs> object = Bind();
  faulty_.plan().Fail(FaultPoint::kPut, 1, E_ACCESSDENIED);
  EXPECT_EQ(WriteStringSet(*object, kFeatures, {"imap"}), E_ACCESSDENIED);
  faulty_.plan().Fail(FaultPoint::kPut, 1, E_FAIL);
  EXPECT_EQ(WriteStringSet(*object, kFeatures, {"imap", "pop3"}), E_FAIL);
  faulty_.plan().Fail(FaultPoint::kPutEx, 1, E_OUTOFMEMORY);
  EXPECT_EQ(WriteStringSet(*object, kFeatures, {}), E_OUTOFMEMORY);
}

TEST_F(StringSetTest, ContainsComparesExactly) {
  directory_.SetValue(kAda, kFeatures, Variant::StringArray({"imap", "pop3"}));
  bool contains = false;
  EXPECT_EQ(StringSetContains(*Bind(), kFeatures, "pop3", contains), S_OK);
  EXPECT_TRUE(contains);
  EXPECT_EQ(StringSetContains(*Bind(), kFeatures, "POP3", contains), S_OK);
  EXPECT_FALSE(contains);
}

TEST_F(StringSetTest, ContainsIsSetOnlyWhenTheReadSucceeded) {
  const Ref<IADs> object = Bind();
  faulty_.plan().Fail(FaultPoint::kGet, 1, E_ACCESSDENIED);
  bool contains = true;
  EXPECT_EQ(StringSetContains(*object, kFeatures, "imap", contains), E_ACCESSDENIED);
  EXPECT_TRUE(contains);
  EXPECT_EQ(StringSetContains(*object, kFeatures, "imap", contains), S_OK) << "absent is empty";
  EXPECT_FALSE(contains);
}

TEST_F(StringSetTest, ASuccessCodeOfReadingIsARead) {
  directory_.SetValue(kAda, kFeatures, Variant::String("imap"));
  const Ref<IADs> object = Bind();
  faulty_.plan().Answer(FaultPoint::kGet, 1, S_FALSE);
  StringSet values;
  EXPECT_EQ(ReadStringSet(*object, kFeatures, values), S_OK);
  EXPECT_THAT(values, ElementsAre("imap"));
}

TEST_F(StringSetTest, LongValuesAreWhole) {
  const std::string one(5000, 'a');
  EXPECT_THAT(Read(Variant::String(one)), ElementsAre(one));
  EXPECT_THAT(Read(Variant::StringArray({one, one + "b"})), ElementsAre(one, one + "b"));
}

}  // namespace
}  // namespace pelora
