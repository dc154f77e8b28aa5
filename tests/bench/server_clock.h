// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <unistd.h>

#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>

#include "tests/lab/lab.h"

namespace pelora::lab {

/// How much of the processor's time the lab's server has taken so far, in seconds: it is one
/// process.
[[nodiscard]] inline double ServerSeconds() {
  std::string number;
  const std::string name = Server();
  std::ifstream(Home() + "/" + name.substr(0, name.find('.')) + ".pid") >> number;
  std::string line;
  std::getline(std::ifstream("/proc/" + number + "/stat"), line);
  // The second word is the program's name, which may hold blanks.
  std::istringstream words(line.substr(line.rfind(')') + 1));
  constexpr int kBefore = 11;
  std::string passed;
  for (int word = 0; word < kBefore; ++word) words >> passed;
  double of_program = 0;
  double of_system = 0;
  if (!(words >> of_program >> of_system)) throw std::runtime_error("the server has no times");
  return (of_program + of_system) / static_cast<double>(sysconf(_SC_CLK_TCK));
}

}  // namespace pelora::lab
