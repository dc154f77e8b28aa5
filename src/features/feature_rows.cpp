// SPDX-License-Identifier: Apache-2.0
#include "features/feature_rows.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>

#include "directory/attribute_catalogue.h"
#include "features/feature_state.h"
#include "resources/resource.h"

namespace pelora {
namespace {

constexpr std::array<std::string_view, 2> kAttributes = {
    CatalogueEntry("peloraEnabledFeatures").name, CatalogueEntry("peloraDisabledFeatures").name};

/// By the state proper, with the button that chooses it.
struct Choice {
  std::string_view text;
  ControlId button = 0;
};
constexpr std::array<Choice, 4> kChoices = {
    {{"unset"}, {"enabled", IDC_FEATURE_ENABLE}, {"disabled", IDC_FEATURE_DISABLE}, {"ambiguous"}}};

std::optional<std::size_t> ChoiceOf(const std::string& name, IADs& object) {
  FeatureState state(name);
  if (FAILED(state.Aggregate({Ref<IADs>(&object)}))) return std::nullopt;
  return state.proper();
}

FieldRow PlainRow(std::string_view name) {
  FieldRow row = {
      .name = "feature." + std::string(name),
      .kind = FieldKind::kChoice,
      .control = IDC_FEATURE_LIST,
      .attributes = {kAttributes.begin(), kAttributes.end()},
      .entry = name,
      .choice_of = [feature =
                        std::string(name)](IADs& object) { return ChoiceOf(feature, object); },
  };
  for (const Choice& choice : kChoices) {
    row.choices.push_back(choice.text);
    row.choice_buttons.push_back(choice.button);
  }
  return row;
}

FieldRow PropsRow(const FeatureWithProps& feature) {
  return {.name = std::string(feature.attribute),
          .kind = FieldKind::kList,
          .control = IDC_FEATURE_LIST,
          .attributes = {feature.attribute},
          .choose = IDC_FEATURE_PROPERTIES,
          .entry = feature.name,
          .typed_in = feature.typed_in};
}

}  // namespace

std::vector<FieldRow> FeatureRows(const FeatureTable& features) {
  std::vector<FieldRow> rows;
  for (const std::string_view name : features.plain) rows.push_back(PlainRow(name));
  for (const FeatureWithProps& feature : features.with_props) {
    if (!feature.attribute.empty()) rows.push_back(PropsRow(feature));
  }
  // As the list has them: in the order of their names.
  std::ranges::sort(rows, {}, &FieldRow::entry);
  return rows;
}

}  // namespace pelora
