// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/text/edit_text.h"

#include <gmock/gmock.h>

namespace pelora::ctl {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(EditTexts, WhatIsWrittenIsRead) {
  const std::vector<EditObject> objects = {
      {.dn = "CN=a: b,DC=c",
       .fields = {{.name = "peloraHidden", .label = "Hide", .values = {"no"}},
                  {.name = "mail", .label = "E-mail", .values = {}},
                  {.name = "otherMailbox", .label = "E-mail", .values = {"x@y", "# z", "\xC3\xBC"}},
                  {.name = "description", .label = "D", .values = {" a\nb\t\"c\" "}}}},
      {.dn = "OU=d", .fields = {}}};
  std::vector<EditObject> read;
  ASSERT_FALSE(ReadEditText(WriteEditText(objects), read));
  ASSERT_EQ(read.size(), 2U);
  EXPECT_EQ(read[0].dn, "CN=a: b,DC=c");
  ASSERT_EQ(read[0].fields.size(), 4U);
  EXPECT_THAT(read[0].fields[1].values, IsEmpty());
  EXPECT_THAT(read[0].fields[2].values, ElementsAre("x@y", "# z", "\xC3\xBC"));
  EXPECT_THAT(read[0].fields[3].values, ElementsAre(" a\nb\t\"c\" "));
  EXPECT_EQ(read[1].dn, "OU=d");
}

TEST(EditTexts, FaultsAreToldWithTheirLine) {
  const auto line_of = [](std::string_view text) {
    std::vector<EditObject> read;
    const auto fault = ReadEditText(text, read);
    return fault ? fault->line : 0;
  };
  EXPECT_EQ(line_of("mail: a\n"), 1U);
  EXPECT_EQ(line_of("CN=a\n\nwhat is this\n"), 3U);
  EXPECT_EQ(line_of("CN=a\nfield with blanks: x\n"), 2U);
  EXPECT_EQ(line_of("CN=a\nmail:: unquoted\n"), 2U);
  EXPECT_EQ(line_of("CN=a\nmail: \xFF\n"), 2U);
  EXPECT_EQ(line_of("# only comments\n#! \x81\n"), 0U);
}

TEST(EditTexts, AnEmptyTextIsNoValueInQuotationMarksEither) {
  std::vector<EditObject> read;
  ASSERT_FALSE(ReadEditText("CN=a\nmail:: \"\"\notherMailbox: x\notherMailbox:: \"\"\n", read));
  ASSERT_EQ(read.size(), 1U);
  ASSERT_EQ(read[0].fields.size(), 2U);
  EXPECT_THAT(read[0].fields[0].values, IsEmpty());
  EXPECT_THAT(read[0].fields[1].values, ElementsAre("x"));
}

TEST(EditTexts, ALineThatSaysNothingMayHoldAnything) {
  std::vector<EditObject> read;
  EXPECT_FALSE(ReadEditText("#! \x81\n# \xff\n", read).has_value());
  EXPECT_TRUE(ReadEditText("CN=\x81\n", read).has_value());
}

TEST(EditTexts, FaultsStandAboveTheirLinesOnce) {
  const std::string first = WithFaults("CN=a\nmail: x\n", std::vector<EditFault>{{2, "mail: bad"}});
  EXPECT_EQ(first, "CN=a\n#! mail: bad\nmail: x\n");
  const std::string second = WithFaults(first, std::vector<EditFault>{{3, "worse"}});
  EXPECT_EQ(second, "CN=a\n#! worse\nmail: x\n");
}

}  // namespace
}  // namespace pelora::ctl
