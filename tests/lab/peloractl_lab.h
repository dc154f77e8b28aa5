// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

#include "tests/lab/lab_test.h"
#include "tests/support/temporary_folder.h"

namespace pelora::lab {

/// What a run of the program left behind.
struct ProgramRun {
  int code = -1;
  std::string output;
  std::string errors;
};

/// The built command line on the domain, and two users in a unit of the test's own.
class LabPeloractl : public ::testing::Test {
 protected:
  LabPeloractl() {
    static int number = 0;
    container_ = "OU=Ctl " + std::to_string(++number) + ",OU=Contract," + Base();
    administrator_.Add(container_, {{"objectClass", {"organizationalUnit"}}});
    const std::string suffix = std::to_string(number);
    ada_ = AddUser("Ada " + suffix, "ctl-ada" + suffix);
    ben_ = AddUser("Ben Önder\\, Dr. " + suffix, "ctl-ben" + suffix);
  }

  std::string AddUser(const std::string& name, const std::string& logon_name) {
    std::string dn = "CN=" + name + "," + container_;
    administrator_.Add(dn, {{"objectClass", {"user"}},
                            {"sAMAccountName", {logon_name}},
                            {"mail", {logon_name + "@pelora.test"}},
                            {"peloraAccount", {"1"}}});
    return dn;
  }

  /// Runs the program on the domain; the arguments are a shell's.
  [[nodiscard]] ProgramRun Ctl(const std::string& arguments,
                               const std::string& user = kAdministrator) const {
    return CtlOn(Server(), arguments, user);
  }
  [[nodiscard]] ProgramRun CtlOn(const std::string& server, const std::string& arguments,
                                 const std::string& user = kAdministrator) const {
    const EnvironmentVariable tickets("KRB5CCNAME", TicketsOf(user));
    const std::string command = std::string(PELORACTL) +
                                (server.empty() ? "" : " --server " + server) + " " + arguments +
                                " > '" + folder_.File("out") + "' 2> '" + folder_.File("err") + "'";
    const int status = std::system(command.c_str());
    return {.code = WEXITSTATUS(status),
            .output = Contents(folder_.File("out")),
            .errors = Contents(folder_.File("err"))};
  }
  [[nodiscard]] static std::string Contents(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  [[nodiscard]] static std::string Quoted(const std::string& text) { return "'" + text + "'"; }

  LabAdministrator administrator_;
  std::string container_;
  std::string ada_;
  std::string ben_;
  pelora::testing::TemporaryFolder folder_;
};

}  // namespace pelora::lab
