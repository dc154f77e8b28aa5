// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/support/watchdog.h"

#include <gtest/gtest.h>

#include "hosts/windows/module/module_path.h"
#include "tests/windows/support/run_program.h"

namespace pelora::windows::test {
namespace {

DWORD Probe(int milliseconds) {
  const std::wstring program = ModulePath(nullptr);
  const std::wstring folder = program.substr(0, program.find_last_of(L'\\'));
  return RunProgram(L"\"" + folder + L"\\windows_watchdog_probe.exe\" " +
                    std::to_wstring(milliseconds));
}

TEST(Watchdog, EndsAProgramThatHangsWithACodeOfItsOwn) {
  EXPECT_EQ(Probe(600000), kWatchdogExitCode);
}

TEST(Watchdog, LeavesAProgramAloneThatGivesSignsOfLife) { EXPECT_EQ(Probe(10), 0U); }

}  // namespace
}  // namespace pelora::windows::test
