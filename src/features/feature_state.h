// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "directory/value_summary.h"
#include "platform/dialog.h"

namespace pelora {

/// What the selected objects say of one plain feature, and what the administrator chose for it.
///
/// The state is a word of three bits: some object has the feature enabled, some object has it
/// disabled, and the administrator changed it. The first two are the state proper: neither is
/// "Unset" (every object follows the server's default), both together are "Ambiguous". Objects that
/// say nothing do not count: one that has it enabled among others that say nothing is "Enabled".
class FeatureState {
 public:
  static constexpr std::uint32_t kEnabled = 1;
  static constexpr std::uint32_t kDisabled = 2;
  static constexpr std::uint32_t kChanged = 4;

  /// Holds as enabled until the objects have been asked.
  explicit FeatureState(std::string name) : name_(std::move(name)) {}

  [[nodiscard]] const std::string& name() const { return name_; }
  [[nodiscard]] std::uint32_t word() const { return word_; }
  /// The word without the administrator's mark.
  [[nodiscard]] std::uint32_t proper() const { return word_ & (kEnabled | kDisabled); }
  /// "Unset", "Enabled", "Disabled" or "Ambiguous".
  [[nodiscard]] std::string_view Text() const;

  /// Asks every object, in order. A failed reading ends it and is returned; the state stays as it
  /// was then.
  [[nodiscard]] HRESULT Aggregate(const BoundObjects& objects);

  // Choices. What is chosen is marked as changed; a choice of what stands already changes nothing.

  /// Whether the state has changed.
  bool Enable() { return Choose(kEnabled); }
  bool Disable() { return Choose(kDisabled); }
  /// Enabled and ambiguous become disabled, unset and disabled become enabled.
  void Toggle();
  /// The choice has been written.
  void ClearChanged() { word_ &= ~kChanged; }

 private:
  bool Choose(std::uint32_t state);

  std::string name_;
  std::uint32_t word_ = kEnabled;
};

/// The plain features by their rows in the list of features.
using FeatureStates = std::map<RowIndex, FeatureState>;

/// Stages on one object what was chosen: every changed feature, in the order of rows, goes into the
/// one of the object's two lists and out of the other. Where it stands in the target list already
/// the object is left as it is, in the other list too. Names that are no features stay.
///
/// Nothing is staged for an object that does not change, else both lists whole. The first failure
/// to read or to stage is returned; the caller commits.
[[nodiscard]] HRESULT WriteFeatureSets(IADs& object, const FeatureStates& states);

}  // namespace pelora
