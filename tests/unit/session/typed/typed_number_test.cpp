// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/typed/typed_number.h"

#include <gtest/gtest.h>

#include <string>

namespace pelora::session {
namespace {

std::string Megabytes(std::string_view text) {
  const std::optional<std::int64_t> megabytes = MegabytesOf(text);
  return megabytes ? std::to_string(*megabytes) : "none";
}

TEST(TypedNumber, IsDigitsUpToTheLargest) {
  for (const char* text : {"", "0", "7", "007", "2147483647"}) {
    EXPECT_EQ(JudgeNumber(text).verdict, Verdict::kFine) << text;
  }
  for (const char* text : {"2147483648", "99999999999", "99999999999999999999999", "500abc", "abc",
                           "-1", "+1", " 1", "1 000", "1.5", "0x10"}) {
    EXPECT_EQ(JudgeNumber(text).verdict, Verdict::kWrong) << text;
  }
}

TEST(TypedNumber, AreMegabytesWithAUnitOrWithout) {
  EXPECT_EQ(Megabytes("0"), "0");
  EXPECT_EQ(Megabytes("500"), "500");
  EXPECT_EQ(Megabytes(" 500 MB "), "500");
  EXPECT_EQ(Megabytes("500m"), "500");
  EXPECT_EQ(Megabytes("2 GB"), "2048");
  EXPECT_EQ(Megabytes("2gb"), "2048");
  EXPECT_EQ(Megabytes("2 g"), "2048");
  EXPECT_EQ(Megabytes("1.5 GB"), "1536");
  EXPECT_EQ(Megabytes("1,5 GB"), "1536");
  EXPECT_EQ(Megabytes("0.1 GB"), "103") << "rounded up";
  EXPECT_EQ(Megabytes("2 TB"), "2097152");
  EXPECT_EQ(Megabytes("1 000"), "1000");
  EXPECT_EQ(Megabytes("12 345 678"), "12345678");
  EXPECT_EQ(Megabytes("2147483647"), "2147483647");
}

TEST(TypedNumber, AreNoMegabytes) {
  for (const char* text : {"",
                           " ",
                           "abc",
                           "500abc",
                           "GB",
                           "2 KB",
                           "2 GBB",
                           "-2 GB",
                           "2 3",
                           "1 00",
                           "1234 567",
                           "1 0000",
                           "1.5",
                           "1,5 MB",
                           "1. GB",
                           "1.5.5 GB",
                           "1.1234567 GB",
                           "99999999999",
                           "2147483648",
                           "2048 TB",
                           "9223372036854775807 GB",
                           "2047.9999999 TB"}) {
    EXPECT_EQ(Megabytes(text), "none") << text;
  }
}

TEST(TypedNumber, SaysHowASizeIsUnderstood) {
  const Judgement with_unit = JudgeMegabytes("2 GB");
  EXPECT_EQ(with_unit.verdict, Verdict::kFine);
  EXPECT_EQ(with_unit.meant, "2048");
  EXPECT_EQ(with_unit.sentence, "This is 2048 MB.");
  EXPECT_EQ(JudgeMegabytes("1 000").meant, "1000");
  for (const char* text : {"", "2048"}) {
    EXPECT_EQ(JudgeMegabytes(text).meant, "") << text;
    EXPECT_EQ(JudgeMegabytes(text).sentence, "") << text;
  }
  for (const char* text : {"99999999999", "500abc", "abc"}) {
    EXPECT_EQ(JudgeMegabytes(text).verdict, Verdict::kWrong) << text;
  }
}

TEST(TypedNumber, IsAPortFromOneOn) {
  for (const char* text : {"", "1", "236", "65535"}) {
    EXPECT_EQ(JudgePort(text).verdict, Verdict::kFine) << text;
  }
  for (const char* text : {"0", "65536", "700000", "http", "80 ", "-80"}) {
    EXPECT_EQ(JudgePort(text).verdict, Verdict::kWrong) << text;
  }
}

}  // namespace
}  // namespace pelora::session
