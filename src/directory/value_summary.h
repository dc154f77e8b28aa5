// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/ads.h"

namespace pelora {

/// The objects that one operation works on, in the order of the selection.
using BoundObjects = std::vector<Ref<IADs>>;

/// How the values read so far agree.
enum class SummaryState : std::uint8_t { kNothingRead = 0, kAllEqual = 1, kDiffering = 2 };

/// One attribute, read from several objects and taken together.
template <class T>
class ValueSummary {
 public:
  /// The first value is held; a later one that is not equal makes the summary differ for good.
  void Enter(T value) {
    if (state_ == SummaryState::kNothingRead) {
      state_ = SummaryState::kAllEqual;
      value_ = std::move(value);
    } else if (!(value == value_)) {
      state_ = SummaryState::kDiffering;
    }
  }

  [[nodiscard]] SummaryState state() const { return state_; }
  [[nodiscard]] bool IsUniform() const { return state_ != SummaryState::kDiffering; }
  /// The first value read; 0 or empty when none was.
  [[nodiscard]] const T& value() const { return value_; }

 private:
  SummaryState state_ = SummaryState::kNothingRead;
  T value_{};
};

/// Read one attribute from every object. A value that is absent, cannot be read, or is not a single
/// value of the type counts as 0, false or the empty string, and enters the summary like any other.
[[nodiscard]] ValueSummary<std::int32_t> SummarizeInteger(const BoundObjects& objects,
                                                          std::string_view attribute);
[[nodiscard]] ValueSummary<bool> SummarizeFlag(const BoundObjects& objects,
                                               std::string_view attribute);
[[nodiscard]] ValueSummary<std::string> SummarizeString(const BoundObjects& objects,
                                                        std::string_view attribute);

}  // namespace pelora
