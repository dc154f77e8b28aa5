// SPDX-License-Identifier: Apache-2.0
// How the built programs are protected against faults of memory, as their files say themselves.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace pelora::test {
namespace {

using ::testing::ContainsRegex;
using ::testing::HasSubstr;

/// The programs that are installed or run when they are made.
std::vector<std::string> Programs() {
  const char* const list = std::getenv("PELORA_PROGRAMS");
  if (list == nullptr) throw std::runtime_error("PELORA_PROGRAMS is not set");
  std::vector<std::string> programs;
  std::istringstream stream(list);
  for (std::string program; std::getline(stream, program, ':');) programs.push_back(program);
  return programs;
}

/// What the system's own reader says of a file; it has to be there.
std::string Read(const std::string& options, const std::string& file) {
  FILE* const pipe = popen(("LC_ALL=C readelf --wide " + options + " '" + file + "'").c_str(), "r");
  if (pipe == nullptr) throw std::runtime_error("readelf cannot be run");
  std::string output;
  for (int letter = std::fgetc(pipe); letter != EOF; letter = std::fgetc(pipe)) {
    output += static_cast<char>(letter);
  }
  if (pclose(pipe) != 0) throw std::runtime_error("readelf cannot read " + file);
  return output;
}

std::string NameOf(const std::string& file) {
  std::string name = std::filesystem::path(file).filename();
  for (char& letter : name) {
    if (letter == '-') letter = '_';
  }
  return name;
}

class HardeningTest : public ::testing::TestWithParam<std::string> {};

TEST_P(HardeningTest, ItsPlaceInMemoryIsNotKnownBefore) {
  EXPECT_THAT(Read("--file-header", GetParam()), ContainsRegex("Type: +DYN"));
  EXPECT_THAT(Read("--dynamic", GetParam()), ContainsRegex("FLAGS_1.* PIE"));
}

TEST_P(HardeningTest, WhatIsResolvedIsResolvedAtOnceAndReadOnly) {
  EXPECT_THAT(Read("--program-headers", GetParam()), HasSubstr("GNU_RELRO"));
  EXPECT_THAT(Read("--dynamic", GetParam()), ContainsRegex("FLAGS_1.* NOW"));
}

TEST_P(HardeningTest, ItsStackHoldsNoProgram) {
  EXPECT_THAT(Read("--program-headers", GetParam()), ContainsRegex("GNU_STACK[^\n]* RW "));
}

TEST_P(HardeningTest, ItsStackIsGuarded) {
  EXPECT_THAT(Read("--dyn-syms", GetParam()), HasSubstr("__stack_chk_fail"));
}

INSTANTIATE_TEST_SUITE_P(Programs, HardeningTest, ::testing::ValuesIn(Programs()),
                         [](const auto& row) { return NameOf(row.param); });

TEST(Hardening, TheConsoleIsAmongThePrograms) {
  EXPECT_THAT(Programs(), ::testing::Contains(::testing::EndsWith("/pelora-console")));
}

TEST(Hardening, TheCheckedFunctionsAreCalledWhereThereAreSuch) {
  for (const std::string& program : Programs()) {
    if (NameOf(program) == "write_display_specifiers") continue;
    // Formats into a place whose size is known, for one.
    EXPECT_THAT(Read("--dyn-syms", program), HasSubstr("__vsnprintf_chk@")) << program;
  }
}

}  // namespace
}  // namespace pelora::test
