// SPDX-License-Identifier: Apache-2.0
#pragma once

// In a program whose leaks are looked for, as the sanitized ones are; elsewhere they are not there.
// NOLINTBEGIN(bugprone-reserved-identifier): these are the names that the compiler gives them.
extern "C" void __lsan_disable() __attribute__((weak));
extern "C" void __lsan_enable() __attribute__((weak));
// NOLINTEND(bugprone-reserved-identifier)

namespace pelora::testing {

/// What is allocated on this thread while it stands counts as no leak: for what a library does not
/// give back that nobody else can reach.
class UncountedLeaks {
 public:
  UncountedLeaks() {
    if (__lsan_disable != nullptr) __lsan_disable();
  }
  ~UncountedLeaks() {
    if (__lsan_enable != nullptr) __lsan_enable();
  }
  UncountedLeaks(const UncountedLeaks&) = delete;
  UncountedLeaks& operator=(const UncountedLeaks&) = delete;
};

}  // namespace pelora::testing
