// SPDX-License-Identifier: Apache-2.0
#include <string>
#include <vector>

#include "hosts/ctl/program.h"
#include "hosts/session/standard_descriptors.h"

int main(int argc, char** argv) {
  pelora::session::OpenStandardDescriptors();
  const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
  return pelora::ctl::RunProgram(arguments);
}
