// SPDX-License-Identifier: Apache-2.0
// What the compiler's stack protection and its checked functions call. The compiler's own library
// would ask the system's cryptography for a number while this one is being loaded, and that is no
// time to load others.
#include <cstdint>

#include "hosts/windows/system_headers.h"

namespace {

constexpr unsigned int kStackCookieCheckFailed = 2;
constexpr unsigned int kRangeCheckFailed = 8;

/// Ends the process at once, with nothing run that could have been tampered with.
[[noreturn]] inline void FailFast(unsigned int code) {
  asm volatile("int $0x29" : : "c"(code));
  __builtin_unreachable();
}

}  // namespace

extern "C" {

// NOLINTBEGIN(bugprone-reserved-identifier,cppcoreguidelines-avoid-non-const-global-variables)
std::uintptr_t __stack_chk_guard = 0x2B992DDFA232;

[[noreturn]] void __stack_chk_fail() { FailFast(kStackCookieCheckFailed); }
[[noreturn]] void __chk_fail() { FailFast(kRangeCheckFailed); }
// NOLINTEND(bugprone-reserved-identifier,cppcoreguidelines-avoid-non-const-global-variables)

}  // extern "C"

namespace {

/// Before anything else of ours runs: a number that nobody can know beforehand, made of what
/// differs from process to process, as the platform's own compiler has it.
[[gnu::constructor(101), gnu::no_stack_protector]] void SetGuard() {
  FILETIME now = {};
  GetSystemTimeAsFileTime(&now);
  LARGE_INTEGER counter = {};
  QueryPerformanceCounter(&counter);
  std::uintptr_t guard = reinterpret_cast<std::uintptr_t>(&guard);
  guard ^= (static_cast<std::uintptr_t>(now.dwHighDateTime) << 32U) | now.dwLowDateTime;
  guard ^= static_cast<std::uintptr_t>(counter.QuadPart) << 17U;
  guard ^= static_cast<std::uintptr_t>(GetCurrentThreadId()) << 24U;
  guard ^= GetCurrentProcessId();
  // A lowest byte of 0 ends every text that would carry the number along.
  constexpr std::uintptr_t kEndsTexts = ~std::uintptr_t{0xFF};
  if ((guard & kEndsTexts) != 0) __stack_chk_guard = guard & kEndsTexts;
}

}  // namespace
