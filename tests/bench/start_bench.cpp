// SPDX-License-Identifier: Apache-2.0
// Measures what starting the console costs, from nothing to its window with the sample company in
// it, and prints a table of limits.
//
//   start_bench PELORA-CONSOLE FOLDER
//
// In FOLDER a directory file is made. The exit code is 1 when the limit is exceeded.
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>

#include "hosts/ldap/create_ldb_directory.h"
#include "hosts/ldap/sample_company.h"
#include "tests/bench/bench_table.h"
#include "tests/bench/child_usage.h"

namespace pelora::lab {
namespace {

/// Of the processor's time, in seconds.
constexpr double kStart = 0.150;
constexpr int kRounds = 11;

int Run(const std::string& program, const std::string& folder) {
  std::filesystem::create_directories(folder);
  const std::string file = folder + "/start.ldb";
  std::filesystem::remove(file);
  const ldap::StoreStatus made = ldap::CreateLdbDirectory(file, ldap::SampleCompanyLdif());
  if (!made.Ok()) throw std::runtime_error(made.text);
  // What the person's own settings would have it do is not what is measured.
  for (const char* place : {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME"}) {
    setenv(place, folder.c_str(), 1);
  }
  std::vector<double> cpu;
  std::vector<double> megabytes;
  for (int round = 0; round < kRounds; ++round) {
    const ChildUsage usage =
        UsageOf({program, "--directory", file, "--screenshot", folder + "/start.png"});
    if (usage.exit_code != 0) throw std::runtime_error("the console cannot be started");
    cpu.push_back(usage.cpu_seconds);
    megabytes.push_back(usage.megabytes);
  }
  BenchTable table;
  table.Add("console: start to window, CPU", MedianOf(cpu), "at most", kStart, 1.0);
  table.AddBeside("its memory", MedianOf(megabytes), "with 100,000 rows at most", 300, "MB");
  return table.AllHold() ? 0 : 1;
}

}  // namespace
}  // namespace pelora::lab

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: start_bench PELORA-CONSOLE FOLDER" << std::endl;
    return 2;
  }
  try {
    return pelora::lab::Run(argv[1], argv[2]);
  } catch (const std::exception& failure) {
    std::cerr << "start_bench: " << failure.what() << std::endl;
    return 2;
  }
}
