// SPDX-License-Identifier: Apache-2.0
#include "directory/attribute_writer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/fake_directory.h"

namespace pelora {
namespace {

using testing::DirectoryCall;
using ::testing::ElementsAre;
using testing::FakeDirectory;
using ::testing::IsEmpty;

const std::string kAda = "LDAP://CN=Ada,DC=x";

class AttributeWriterTest : public ::testing::Test {
 protected:
  AttributeWriterTest() {
    directory_.AddObject(kAda);
    EXPECT_EQ(directory_.ADsGetObject(kAda, IID_IADs, object_), S_OK);
    directory_.ClearCalls();
  }

  HRESULT Write(AttributeChange change, bool clear_empty = true) {
    return WriteAttribute(*object_, change, clear_empty);
  }

  FakeDirectory directory_;
  Ref<IADs> object_;
};

TEST_F(AttributeWriterTest, ASkippedChangeIsPassedOver) {
  EXPECT_EQ(
      Write({.value = "1", .name = "peloraAccount", .skip = true, .type = ChangeType::kInteger}),
      S_OK);
  EXPECT_EQ(Write({.name = "mail", .skip = true, .type = ChangeType{16}}), S_OK);
  EXPECT_THAT(directory_.Log(), IsEmpty());
}

TEST_F(AttributeWriterTest, AStringIsPut) {
  EXPECT_EQ(Write({.value = "M\xC3\xBCller", .name = "description"}), S_OK);
  EXPECT_EQ(directory_.calls().front().value, Variant::String("M\xC3\xBCller"));
  EXPECT_EQ(directory_.calls().front().kind, DirectoryCall::Kind::kPut);
}

TEST_F(AttributeWriterTest, AnIntegerIsPutAsANumber) {
  EXPECT_EQ(Write({.value = "007", .name = "peloraQuotaHard", .type = ChangeType::kInteger}), S_OK);
  EXPECT_THAT(directory_.Log(), ElementsAre("Put " + kAda + " peloraQuotaHard 7"));
}

TEST_F(AttributeWriterTest, EmptyTextClearsOrIsPassedOver) {
  for (const ChangeType type : {ChangeType::kInteger, ChangeType::kString}) {
    const std::string name = type == ChangeType::kInteger ? "peloraQuotaHard" : "description";
    directory_.ClearCalls();
    EXPECT_EQ(Write({.name = name, .type = type}, false), S_OK);
    EXPECT_THAT(directory_.Log(), IsEmpty());
    EXPECT_EQ(Write({.name = name, .type = type}, true), S_OK);
    ASSERT_EQ(directory_.calls().size(), 1U);
    EXPECT_EQ(directory_.calls().front().kind, DirectoryCall::Kind::kPutEx);
    EXPECT_EQ(directory_.calls().front().control, ADS_PROPERTY_CLEAR);
    EXPECT_EQ(directory_.calls().front().name, name);
  }
}

TEST_F(AttributeWriterTest, AListIsPutAsAnArrayAndUsedUp) {
  AttributeChange change{.name = "otherMailbox",
                         .type = ChangeType::kMultiValued,
                         .variant = Variant::StringArray({"b@x", "a@x"})};
  EXPECT_EQ(WriteAttribute(*object_, change, true), S_OK);
  EXPECT_THAT(directory_.Log(), ElementsAre("Put " + kAda + " otherMailbox [\"b@x\", \"a@x\"]"));
  EXPECT_TRUE(change.variant.IsEmpty());
  EXPECT_EQ(WriteAttribute(*object_, change, true), S_ADS_ERRORSOCCURRED);
  EXPECT_EQ(directory_.calls().size(), 1U);
}

TEST_F(AttributeWriterTest, AnEmptyListIsPutAsAnEmptyArrayWhateverClearEmptySays) {
  for (const bool clear_empty : {true, false}) {
    directory_.ClearCalls();
    EXPECT_EQ(Write({.name = "otherMailbox",
                     .type = ChangeType::kMultiValued,
                     .variant = Variant::StringArray({})},
                    clear_empty),
              S_OK);
    ASSERT_EQ(directory_.calls().size(), 1U);
    EXPECT_EQ(directory_.calls().front().kind, DirectoryCall::Kind::kPut);
    EXPECT_EQ(directory_.calls().front().value, Variant::StringArray({}));
  }
}

TEST_F(AttributeWriterTest, AListWithoutItsArrayStops) {
  EXPECT_EQ(Write({.name = "otherMailbox", .type = ChangeType::kMultiValued}),
            S_ADS_ERRORSOCCURRED);
  EXPECT_THAT(directory_.Log(), IsEmpty());
}

TEST_F(AttributeWriterTest, AnyOtherTypeStops) {
  for (const std::uint16_t type :
       std::initializer_list<std::uint16_t>{1, 2, 4, 7, 9, 11, 16, 0x200C, 0xFFFF}) {
    EXPECT_EQ(Write({.value = "1", .name = "mail", .type = ChangeType{type}}),
              S_ADS_ERRORSOCCURRED);
  }
  EXPECT_THAT(directory_.Log(), IsEmpty());
}

struct NumberRow {
  std::string text;
  std::uint32_t number;
};

const std::vector<NumberRow> kNumberRows = {
    {"0", 0},
    {"1", 1},
    {"007", 7},
    {"100", 100},
    {"12abc", 12},
    {"abc", 0},
    {"", 0},
    {" \t 12", 12},
    {"12 34", 12},
    {"+5", 5},
    {"-1", 4294967295U},
    {"- 1", 0},
    {"+-1", 0},
    {"2147483647", 2147483647U},
    {"2147483648", 2147483648U},
    {"4294967295", 4294967295U},
    {"4294967296", 4294967295U},
    {"99999999999999999999999999", 4294967295U},
    {"0x10", 0},
    {"1.9", 1},
    {"\xD9\xA1", 0},
};

TEST(ParseUnsigned, ReadsADecimalNumberUpToTheFirstOtherCharacter) {
  for (const NumberRow& row : kNumberRows) {
    EXPECT_EQ(static_cast<std::uint32_t>(ParseUnsigned(row.text)), row.number) << row.text;
  }
}

}  // namespace
}  // namespace pelora
