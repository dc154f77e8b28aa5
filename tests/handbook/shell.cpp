// SPDX-License-Identifier: Apache-2.0
#include "tests/handbook/shell.h"

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace pelora::test {

ShellResult RunShell(const std::string& script, const std::string& folder) {
  const std::string path = folder + "/script-of-the-test.sh";
  std::ofstream(path) << "set -euo pipefail\nexport PATH=\"" << Environment("PELORA_PROGRAM_FOLDER")
                      << ":$PATH\"\ncd '" << folder << "'\n"
                      << script << "\n";
  FILE* const pipe = popen(("bash '" + path + "' 2>&1 < /dev/null").c_str(), "r");
  if (pipe == nullptr) throw std::runtime_error("no shell can be run");
  ShellResult result;
  std::array<char, 4096> bytes{};
  std::size_t count = 0;
  while ((count = fread(bytes.data(), 1, bytes.size(), pipe)) > 0) {
    result.output.append(bytes.data(), count);
  }
  const int status = pclose(pipe);
  result.exit_code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  unlink(path.c_str());
  return result;
}

std::string Environment(const char* name) {
  const char* const value = std::getenv(name);
  if (value == nullptr) throw std::runtime_error(std::string(name) + " is not set");
  return value;
}

std::string ReadWholeFile(const std::string& path) {
  std::ifstream file(path);
  if (!file) throw std::runtime_error(path + " cannot be read");
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace pelora::test
