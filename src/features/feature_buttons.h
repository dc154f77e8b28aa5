// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>

namespace pelora {

/// What a selected row of the list of features stands for.
struct SelectedFeature {
  enum class Kind : std::uint8_t {
    kPlain,
    kWithProps,
    /// A row of which nothing is known: its properties cannot be made, or the loading ended at it.
    kUnknown,
  };

  Kind kind = Kind::kUnknown;
  /// The state proper of a plain feature.
  std::uint32_t state = 0;
};

/// Which buttons are offered for the selected features.
struct FeatureButtons {
  bool properties = false;
  bool enable = false;
  bool disable = false;

  friend bool operator==(const FeatureButtons&, const FeatureButtons&) = default;
};

/// Properties are offered for one feature that has them. Plain features are offered to be enabled
/// where one of them is disabled or ambiguous, to be disabled where one is enabled or ambiguous,
/// and both where all are unset. Any other selection is offered nothing.
[[nodiscard]] FeatureButtons ButtonsFor(std::span<const SelectedFeature> selection);

}  // namespace pelora
