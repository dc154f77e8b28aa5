// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "tests/support/sample_file.h"
#include "tests/support/sample_objects.h"

namespace pelora::testing {

/// What a run of a program left behind.
struct ProgramRun {
  int code = -1;
  std::string output;
  std::string errors;

  /// The lines of the output.
  [[nodiscard]] std::vector<std::string> Lines() const;
};

/// Runs a program with nothing of its own environment but what is given, and waits for its end.
[[nodiscard]] ProgramRun RunProgram(const std::vector<std::string>& arguments,
                                    const std::map<std::string, std::string>& environment = {},
                                    const std::string& input = {});

/// The program on a directory file of the test's own, which holds the sample company.
class PeloractlTest : public ::testing::Test {
 protected:
  PeloractlTest();

  /// Runs the program on the directory, in a process of its own that is not loaded anew.
  [[nodiscard]] ProgramRun Ctl(std::vector<std::string> arguments,
                               const std::string& input = {}) const;
  /// The same without a directory named, by the built program.
  [[nodiscard]] ProgramRun Bare(std::vector<std::string> arguments) const;
  /// The settings of an object, as `show --json` prints them.
  [[nodiscard]] nlohmann::json Fields(const std::string& object) const;
  /// What the directory holds of an object's attribute, values in order, one a line.
  [[nodiscard]] std::string Stored(const std::string& dn, const std::string& attribute) const;
  /// Everything the directory holds.
  [[nodiscard]] std::string Dump() const;
  [[nodiscard]] std::string File(const std::string& name) const { return file_.File(name); }
  /// Makes a file of the test's folder.
  std::string Write(const std::string& name, const std::string& text) const;
  [[nodiscard]] static std::string Read(const std::string& path);

  std::map<std::string, std::string> environment;

 private:
  SampleFile file_;
};

inline constexpr const char* kUnit = sample::kCompany;
using sample::kHelga;
using sample::kTom;

}  // namespace pelora::testing
