// SPDX-License-Identifier: Apache-2.0
// That what is measured by hand can be: with what it finds here, and whatever the machine does
// besides.
#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>

#include "tests/lab/lab.h"

namespace pelora::lab {
namespace {

TEST(DirectoryBenchTest, MeasuresEverythingItIsThereFor) {
  const std::string output =
      OutputOf("'" + std::string(std::getenv("PELORA_DIRECTORY_BENCH")) + "' --quick 'OU=Linden," +
               Base() + "' 'OU=Linden," + Base() + "'");
  std::vector<std::string> measured;
  std::istringstream lines(output);
  for (std::string line; std::getline(lines, line);) {
    // What stands below a row explains it.
    if (line.starts_with(' ')) continue;
    measured.push_back(line.substr(0, line.find("  ")));
    EXPECT_NE(line.find(" of at most "), std::string::npos) << line;
  }
  EXPECT_EQ(measured, (std::vector<std::string>{"open a tab on 3 users", "open them 5 ms away",
                                                "apply one change to 3 users", "list 3 objects",
                                                "list 3 objects", "open a tab on 3 users",
                                                "apply one change to 3 users"}));
}

}  // namespace
}  // namespace pelora::lab
