// SPDX-License-Identifier: Apache-2.0
#include "tests/bench/child_usage.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <stdexcept>

namespace pelora::lab {
namespace {

constexpr double kMillion = 1e6;
constexpr double kKilobytesInMegabyte = 1024;

double Seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / kMillion;
}

[[noreturn]] void Become(const std::vector<std::string>& command) {
  std::vector<char*> arguments;
  for (const std::string& argument : command) {
    arguments.push_back(const_cast<char*>(argument.c_str()));
  }
  arguments.push_back(nullptr);
  const int nowhere = open("/dev/null", O_RDWR);
  for (int descriptor = 0; descriptor < 3; ++descriptor) dup2(nowhere, descriptor);
  execvp(arguments.front(), arguments.data());
  _exit(127);
}

}  // namespace

ChildUsage UsageOf(const std::vector<std::string>& command) {
  const auto begin = std::chrono::steady_clock::now();
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("no process can be made");
  if (child == 0) Become(command);
  int status = 0;
  rusage usage{};
  if (wait4(child, &status, 0, &usage) != child || !WIFEXITED(status) ||
      WEXITSTATUS(status) == 127) {
    throw std::runtime_error("cannot be run: " + command.front());
  }
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
  return {.exit_code = WEXITSTATUS(status),
          .seconds = taken.count(),
          .cpu_seconds = Seconds(usage.ru_utime) + Seconds(usage.ru_stime),
          .megabytes = static_cast<double>(usage.ru_maxrss) / kKilobytesInMegabyte};
}

}  // namespace pelora::lab
