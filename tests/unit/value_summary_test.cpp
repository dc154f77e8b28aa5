// SPDX-License-Identifier: Apache-2.0
#include "directory/value_summary.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/fake_directory.h"
#include "tests/support/fault_directory.h"

namespace pelora {
namespace {

using testing::FakeDirectory;
using testing::FaultDirectory;
using testing::FaultPoint;

class ValueSummaryTest : public ::testing::Test {
 protected:
  /// Binds one new object per value; an empty value leaves the attribute unset.
  BoundObjects Bind(const std::string& attribute, const std::vector<Variant>& values) {
    BoundObjects objects;
    for (const Variant& value : values) {
      const std::string path = "LDAP://CN=o" + std::to_string(++made_) + ",DC=x";
      directory_.AddObject(path);
      directory_.SetValue(path, attribute, value);
      Ref<IADs> object;
      EXPECT_EQ(faulty_.ADsGetObject(path, IID_IADs, object), S_OK);
      objects.push_back(std::move(object));
    }
    return objects;
  }

  FakeDirectory directory_;
  FaultDirectory faulty_{directory_};
  int made_ = 0;
};

TEST(ValueSummary, StatesHaveTheirNumbers) {
  ValueSummary<std::int32_t> summary;
  EXPECT_EQ(summary.state(), SummaryState::kNothingRead);
  EXPECT_TRUE(summary.IsUniform());
  summary.Enter(5);
  EXPECT_EQ(summary.state(), SummaryState::kAllEqual);
  summary.Enter(5);
  EXPECT_TRUE(summary.IsUniform());
  EXPECT_EQ(summary.value(), 5);
  summary.Enter(6);
  EXPECT_EQ(summary.state(), SummaryState::kDiffering);
  EXPECT_FALSE(summary.IsUniform());
  EXPECT_EQ(static_cast<int>(SummaryState::kNothingRead), 0);
  EXPECT_EQ(static_cast<int>(SummaryState::kAllEqual), 1);
  EXPECT_EQ(static_cast<int>(SummaryState::kDiffering), 2);
}

TEST(ValueSummary, OnceDifferingItStaysSo) {
  ValueSummary<std::string> summary;
  for (const char* value : {"a", "b", "a", "a"}) summary.Enter(value);
  EXPECT_FALSE(summary.IsUniform());
}

TEST_F(ValueSummaryTest, WithoutObjectsTheSummaryIsUniform) {
  EXPECT_EQ(SummarizeInteger({}, "peloraQuotaHard").state(), SummaryState::kNothingRead);
  EXPECT_EQ(SummarizeInteger({}, "peloraQuotaHard").value(), 0);
  EXPECT_EQ(SummarizeString({}, "mail").value(), "");
  EXPECT_FALSE(SummarizeFlag({}, "peloraAccount").value());
}

TEST_F(ValueSummaryTest, AnUnsetIntegerIsZeroAndEntersLikeOthers) {
  const Variant unset;
  EXPECT_EQ(SummarizeInteger(Bind("peloraQuotaHard", {unset}), "peloraQuotaHard").value(), 0);
  EXPECT_TRUE(
      SummarizeInteger(Bind("peloraQuotaHard", {unset, Variant::Integer(0)}), "peloraQuotaHard")
          .IsUniform());
  EXPECT_FALSE(
      SummarizeInteger(Bind("peloraQuotaHard", {Variant::Integer(1), unset}), "peloraQuotaHard")
          .IsUniform());
}

TEST_F(ValueSummaryTest, OnlyAnIntegerCountsAsOne) {
  for (const Variant& value :
       {Variant::String("7"), Variant::OtherType(VT_BOOL), Variant::StringArray({"7", "8"})}) {
    const auto summary = SummarizeInteger(Bind("peloraQuotaHard", {value}), "peloraQuotaHard");
    EXPECT_EQ(summary.state(), SummaryState::kAllEqual);
    EXPECT_EQ(summary.value(), 0);
  }
}

TEST_F(ValueSummaryTest, FlagsAgreeWhenBothAreSetHowever) {
  EXPECT_TRUE(SummarizeFlag(Bind("peloraAccount",
                                 {Variant::Integer(1), Variant::Integer(2), Variant::Integer(-1)}),
                            "peloraAccount")
                  .IsUniform());
  EXPECT_FALSE(
      SummarizeFlag(Bind("peloraAccount", {Variant::Integer(1), Variant()}), "peloraAccount")
          .IsUniform());
}

TEST_F(ValueSummaryTest, OnlyASingleStringCountsAsOne) {
  EXPECT_EQ(SummarizeString(Bind("description", {Variant::String("x")}), "description").value(),
            "x");
  for (const Variant& value : {Variant(), Variant::Integer(7), Variant::StringArray({"a", "b"})}) {
    const auto summary = SummarizeString(Bind("description", {value}), "description");
    EXPECT_EQ(summary.state(), SummaryState::kAllEqual);
    EXPECT_EQ(summary.value(), "");
  }
  EXPECT_FALSE(
      SummarizeString(Bind("description", {Variant::String("x"), Variant()}), "description")
          .IsUniform());
}

TEST_F(ValueSummaryTest, AValueCountsOnlyWhenReadingSaysExactlyOk) {
  const BoundObjects flagged = Bind("peloraAccount", {Variant::Integer(1)});
  const BoundObjects described = Bind("description", {Variant::String("x")});
  faulty_.plan().Fail(FaultPoint::kGet, 1, E_ACCESSDENIED);
  EXPECT_FALSE(SummarizeFlag(flagged, "peloraAccount").value());
  // The value comes all the same, and does not count.
  faulty_.plan().Answer(FaultPoint::kGet, 1, S_FALSE);
  EXPECT_FALSE(SummarizeFlag(flagged, "peloraAccount").value());
  faulty_.plan().Answer(FaultPoint::kGet, 1, S_ADS_ERRORSOCCURRED);
  EXPECT_EQ(SummarizeInteger(flagged, "peloraAccount").value(), 0);
  faulty_.plan().Answer(FaultPoint::kGet, 1, S_FALSE);
  EXPECT_EQ(SummarizeString(described, "description").value(), "");
  EXPECT_TRUE(SummarizeFlag(flagged, "peloraAccount").value());
  EXPECT_EQ(SummarizeString(described, "description").value(), "x");
}

TEST_F(ValueSummaryTest, ALongTextIsWhole) {
  const std::string text(5000, 't');
  EXPECT_EQ(SummarizeString(Bind("description", {Variant::String(text)}), "description").value(),
            text);
}

}  // namespace
}  // namespace pelora
