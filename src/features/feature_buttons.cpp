// SPDX-License-Identifier: Apache-2.0
#include "features/feature_buttons.h"

#include "features/feature_state.h"

namespace pelora {

FeatureButtons ButtonsFor(std::span<const SelectedFeature> selection) {
  if (selection.empty()) return {};
  std::uint32_t states = 0;
  for (const SelectedFeature& feature : selection) {
    if (feature.kind != SelectedFeature::Kind::kPlain) {
      const bool has_props = feature.kind == SelectedFeature::Kind::kWithProps;
      return {.properties = has_props && selection.size() == 1};
    }
    states |= feature.state;
  }
  return {.properties = false,
          .enable = states == 0 || (states & FeatureState::kDisabled) != 0,
          .disable = states == 0 || (states & FeatureState::kEnabled) != 0};
}

}  // namespace pelora
