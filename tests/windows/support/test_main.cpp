// SPDX-License-Identifier: Apache-2.0
// Entry of every test program: an apartment of its own, the common controls, and a watchdog that
// each test feeds.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>

#include "hosts/windows/system_headers.h"
#include "tests/windows/support/watchdog.h"

namespace {

using pelora::windows::test::Watchdog;

constexpr std::chrono::seconds kPatience{60};
constexpr unsigned int kCrashExitCode = 98;

class WatchdogFeeder final : public testing::EmptyTestEventListener {
 public:
  void OnTestStart(const testing::TestInfo& info) override {
    watchdog_.Feed(std::string(info.test_suite_name()) + "." + info.name() + " ran");
  }
  // Long tests give signs of life by succeeding.
  void OnTestPartResult(const testing::TestPartResult& /*result*/) override {
    watchdog_.Feed("a long test went on");
  }
  void OnTestEnd(const testing::TestInfo& info) override {
    watchdog_.Feed(std::string(info.name()) + " was over");
  }

 private:
  Watchdog watchdog_{kPatience};
};

LONG WINAPI EndCrashed(EXCEPTION_POINTERS* pointers) {
  std::fprintf(stderr, "crash: exception %08lX at %p\n", pointers->ExceptionRecord->ExceptionCode,
               pointers->ExceptionRecord->ExceptionAddress);
  std::fflush(stderr);
  TerminateProcess(GetCurrentProcess(), kCrashExitCode);
  return EXCEPTION_EXECUTE_HANDLER;
}

}  // namespace

int main(int argc, char** argv) {
  SetUnhandledExceptionFilter(&EndCrashed);
  testing::InitGoogleMock(&argc, argv);
  testing::UnitTest::GetInstance()->listeners().Append(new WatchdogFeeder);
  const INITCOMMONCONTROLSEX controls = {.dwSize = sizeof(INITCOMMONCONTROLSEX),
                                         .dwICC = ICC_WIN95_CLASSES};
  InitCommonControlsEx(&controls);
  if (FAILED(OleInitialize(nullptr))) return 1;
  const int result = RUN_ALL_TESTS();
  OleUninitialize();
  return result;
}
