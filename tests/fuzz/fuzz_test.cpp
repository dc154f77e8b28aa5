// SPDX-License-Identifier: Apache-2.0
// Runs every fuzzer for so many inputs, on those in the tree and on what it makes of them: always
// the same ones, since a suite that is red by chance says nothing about what was changed. New ones
// are looked for by run_fuzzers.sh, for as long as one likes.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <regex>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/support/temporary_folder.h"

namespace pelora::test {
namespace {

std::string Setting(const char* name) {
  const char* const value = std::getenv(name);
  if (value == nullptr) throw std::runtime_error(std::string(name) + " is not set");
  return value;
}

std::vector<std::string> Fuzzers() {
  std::vector<std::string> fuzzers;
  std::istringstream stream(Setting("PELORA_FUZZERS"));
  for (std::string fuzzer; std::getline(stream, fuzzer, ':');) fuzzers.push_back(fuzzer);
  return fuzzers;
}

std::string NameOf(const std::string& fuzzer) { return std::filesystem::path(fuzzer).filename(); }

/// What a command prints, errors included, and its exit code.
std::string OutputOf(const std::string& command, int& code) {
  FILE* const pipe = popen((command + " 2>&1").c_str(), "r");
  if (pipe == nullptr) throw std::runtime_error("cannot run " + command);
  std::string output;
  for (int letter = std::fgetc(pipe); letter != EOF; letter = std::fgetc(pipe)) {
    output += static_cast<char>(letter);
  }
  const int status = pclose(pipe);
  code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return output;
}

class FuzzTest : public ::testing::TestWithParam<std::string> {};

TEST_P(FuzzTest, NothingBreaksIt) {
  const testing::TemporaryFolder folder;
  const std::string seeds =
      Setting("PELORA_SOURCE_DIR") + "/tests/fuzz/corpus/" + NameOf(GetParam());
  // The LDAP library itself loses what it cannot read.
  const std::string leaks = NameOf(GetParam()) == "fuzz_ldap_messages" ? "0" : "1";
  std::string command = "ASAN_OPTIONS=detect_leaks=" + leaks + " '" + GetParam() +
                        "' -detect_leaks=" + leaks +
                        " -seed=1 -runs=" + Setting("PELORA_FUZZ_INPUTS") +
                        " -max_len=4096 -timeout=10 -rss_limit_mb=1024 -print_final_stats=1 "
                        "-artifact_prefix='" +
                        folder.File("found-") + "'";
  if (std::filesystem::exists(seeds)) command += " '" + folder.File("") + "' '" + seeds + "'";
  int code = -1;
  const std::string output = OutputOf(command, code);
  EXPECT_EQ(code, 0) << output;
  EXPECT_THAT(output, ::testing::ContainsRegex("number_of_executed_units: *[1-9]"));
}

INSTANTIATE_TEST_SUITE_P(Fuzzers, FuzzTest, ::testing::ValuesIn(Fuzzers()),
                         [](const auto& row) { return NameOf(row.param); });

TEST(FuzzInputs, BelongToAFuzzerAndSayWhatTheyHold) {
  const std::filesystem::path sources = Setting("PELORA_SOURCE_DIR") + "/tests/fuzz";
  const std::regex checksum("[0-9a-f]{40}");
  for (const auto& folder : std::filesystem::directory_iterator(sources / "corpus")) {
    const std::string fuzzer = folder.path().filename();
    EXPECT_TRUE(std::filesystem::exists(sources / (fuzzer + ".cpp"))) << fuzzer;
    for (const auto& input : std::filesystem::directory_iterator(folder)) {
      EXPECT_FALSE(std::regex_match(input.path().filename().string(), checksum)) << input.path();
    }
  }
}

}  // namespace
}  // namespace pelora::test
