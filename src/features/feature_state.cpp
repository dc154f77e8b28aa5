// SPDX-License-Identifier: Apache-2.0
#include "features/feature_state.h"

#include <array>

#include "directory/attribute_catalogue.h"
#include "directory/string_set.h"

namespace pelora {
namespace {

constexpr const Attribute& kEnabledFeatures = CatalogueEntry("peloraEnabledFeatures");
constexpr const Attribute& kDisabledFeatures = CatalogueEntry("peloraDisabledFeatures");

/// By the state proper.
constexpr std::array<std::string_view, 4> kTexts = {"Unset", "Enabled", "Disabled", "Ambiguous"};

/// Whether `name` was not in `target` before; only then it leaves `opposite`.
bool Move(const std::string& name, StringSet& target, StringSet& opposite) {
  if (!target.insert(name).second) return false;
  opposite.erase(name);
  return true;
}

}  // namespace

std::string_view FeatureState::Text() const { return kTexts.at(proper()); }

HRESULT FeatureState::Aggregate(const BoundObjects& objects) {
  std::uint32_t word = 0;
  for (const Ref<IADs>& object : objects) {
    bool contains = false;
    HRESULT status = StringSetContains(*object, kEnabledFeatures.name, name_, contains);
    if (FAILED(status)) return status;
    if (contains) word |= kEnabled;
    status = StringSetContains(*object, kDisabledFeatures.name, name_, contains);
    if (FAILED(status)) return status;
    if (contains) word |= kDisabled;
  }
  word_ = word;
  return S_OK;
}

void FeatureState::Toggle() { Choose((word_ & kEnabled) != 0 ? kDisabled : kEnabled); }

bool FeatureState::Choose(std::uint32_t state) {
  if (proper() == state) return false;
  word_ = state | kChanged;
  return true;
}

HRESULT WriteFeatureSets(IADs& object, const FeatureStates& states) {
  StringSet enabled;
  StringSet disabled;
  HRESULT status = ReadStringSet(object, kEnabledFeatures.name, enabled);
  if (FAILED(status)) return status;
  status = ReadStringSet(object, kDisabledFeatures.name, disabled);
  if (FAILED(status)) return status;

  bool changed = false;
  for (const auto& [row, state] : states) {
    if (state.word() == (FeatureState::kChanged | FeatureState::kEnabled)) {
      changed |= Move(state.name(), enabled, disabled);
    } else if (state.word() == (FeatureState::kChanged | FeatureState::kDisabled)) {
      changed |= Move(state.name(), disabled, enabled);
    }
  }
  if (!changed) return S_OK;

  status = WriteStringSet(object, kEnabledFeatures.name, enabled);
  if (FAILED(status)) return status;
  return WriteStringSet(object, kDisabledFeatures.name, disabled);
}

}  // namespace pelora
