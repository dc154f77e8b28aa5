// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/manual/help_text.h"

#include <gmock/gmock.h>

namespace pelora::ctl {
namespace {

TEST(ParsedHelp, TakesApartWhatACommandLineParserPrints) {
  const ParsedHelp help = ParseHelp(
      "Shows the objects\nof a directory.\n\nTwice.\nUsage: console [OPTIONS]\n\nOptions:\n"
      "  --version                   Show the version\n"
      "  --server HOST x             Show the domain;\n"
      "                              without a name, another\n\n"
      "Without --directory\nit is made.\n\nExit status:\n  0  done\n  1  there is\n     none\n");
  EXPECT_EQ(help.usage, "console [OPTIONS]");
  ASSERT_EQ(help.sections.size(), 4U);
  ASSERT_EQ(help.sections[0].blocks.size(), 2U);
  EXPECT_EQ(help.sections[0].title, "");
  EXPECT_EQ(help.sections[0].blocks[0].text, "Shows the objects of a directory.");
  EXPECT_EQ(help.sections[0].blocks[1].text, "Twice.");
  EXPECT_EQ(help.sections[1].title, "Options");
  ASSERT_EQ(help.sections[1].blocks.size(), 2U);
  EXPECT_EQ(help.sections[1].blocks[1].term, "--server HOST x");
  EXPECT_EQ(help.sections[1].blocks[1].text, "Show the domain; without a name, another");
  EXPECT_EQ(help.sections[2].title, "");
  EXPECT_EQ(help.sections[2].blocks[0].text, "Without --directory it is made.");
  EXPECT_EQ(help.sections[3].title, "Exit status");
  ASSERT_EQ(help.sections[3].blocks.size(), 2U);
}

TEST(ParsedHelp, TakesTermsWithTheirTextsBelowAndAUsageOfSeveralLines) {
  const ParsedHelp help = ParseHelp(
      "usage: deploy [-h] (--server SERVER | --database DATABASE)\n"
      "              {schema,register}\n\nPuts it there.\n\npositional arguments:\n"
      "  {schema,register}\n                        schema: add; register:\n"
      "                        enter\n");
  EXPECT_EQ(help.usage, "deploy [-h] (--server SERVER | --database DATABASE) {schema,register}");
  ASSERT_EQ(help.sections.size(), 2U);
  EXPECT_EQ(help.sections[0].blocks[0].text, "Puts it there.");
  ASSERT_EQ(help.sections[1].blocks.size(), 1U);
  EXPECT_EQ(help.sections[1].blocks[0].term, "{schema,register}");
  EXPECT_EQ(help.sections[1].blocks[0].text, "schema: add; register: enter");
}

TEST(ParsedHelp, OfNothingIsNothing) {
  EXPECT_TRUE(ParseHelp("").sections.empty());
  EXPECT_TRUE(ParseHelp("\n\n").sections.empty());
}

}  // namespace
}  // namespace pelora::ctl
