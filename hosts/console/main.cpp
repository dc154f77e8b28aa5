// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/program/run_console.h"
#include "hosts/session/standard_descriptors.h"

int main(int argc, char** argv) {
  pelora::session::OpenStandardDescriptors();
  return pelora::console::RunConsole(argc, argv);
}
