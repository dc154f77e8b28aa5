// SPDX-License-Identifier: Apache-2.0
// A program with a watchdog: it waits the given number of milliseconds before each of two signs of
// life, and has 500 for each.
#include <chrono>
#include <cstdlib>
#include <thread>

#include "tests/windows/support/watchdog.h"

int main(int argc, char** argv) {
  constexpr std::chrono::milliseconds kPatience{500};
  const std::chrono::milliseconds wait{argc > 1 ? std::atoi(argv[1]) : 0};
  pelora::windows::test::Watchdog watchdog(kPatience);
  for (int sign = 0; sign < 2; ++sign) {
    std::this_thread::sleep_for(wait);
    watchdog.Feed("probing");
  }
  return 0;
}
