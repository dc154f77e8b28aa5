// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <iostream>
#include <string>
#include <string_view>

#include "platform/hresult.h"
#include "tests/support/fault_directory.h"

namespace pelora::testing {

/// Why a call to a directory fails, or seems to.
struct Cause {
  std::string_view name;
  HRESULT status = E_FAIL;
  /// It was done, and only the answer says otherwise.
  bool is_done = false;

  [[nodiscard]] bool IsFailure() const { return FAILED(status); }
};

inline constexpr auto kServerDown = static_cast<HRESULT>(0x8007203AU);
inline constexpr auto kNoAnswer = static_cast<HRESULT>(0x800705B4U);

/// The first is what an attribute without a value answers.
inline constexpr auto kCauses = std::to_array<Cause>({
    {"not set", E_ADS_PROPERTY_NOT_FOUND},
    {"refused", E_ACCESSDENIED},
    {"could not be asked", kServerDown},
    {"name in use", kObjectAlreadyExists},
    {"done with a remark", S_ADS_ERRORSOCCURRED, true},
    {"done and the answer lost", kNoAnswer, true},
});

/// Makes the `nth` call from now fail.
inline void Inject(FaultPlan& plan, std::size_t nth, const Cause& cause) {
  if (cause.is_done) {
    plan.Answer(FaultPoint::kAnyCall, nth, cause.status);
  } else {
    plan.Fail(FaultPoint::kAnyCall, nth, cause.status);
  }
}

/// Plays a scene once for each of its `calls` and each cause of its failing, up to the first that
/// does not hold; `play` takes both. Ends with one line for whoever sums up what was tried.
template <class Causes, class Play>
void PlayEveryFault(std::string_view where, std::size_t calls, const Causes& causes,
                    const Play& play) {
  std::size_t faults = 0;
  for (std::size_t call = 1; call <= calls; ++call) {
    for (const auto& cause : causes) {
      SCOPED_TRACE("call " + std::to_string(call) + ", " + std::string(cause.name));
      play(call, cause);
      ++faults;
      if (::testing::Test::HasFailure()) return;
    }
  }
  std::cout << "faults injected and survived: " << faults << " (" << where << ")\n";
}

}  // namespace pelora::testing
