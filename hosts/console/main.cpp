// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/program/run_console.h"

int main(int argc, char** argv) { return pelora::console::RunConsole(argc, argv); }
