// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string_view>

#include "directory/string_set.h"
#include "features/feature_props.h"
#include "platform/field_rows.h"

namespace pelora {

/// A feature with properties of its own.
struct FeatureWithProps {
  std::string_view name;
  /// Null for a feature whose properties cannot be shown yet: it gets a row without a status.
  FeaturePropsFactory create = nullptr;
  /// What its properties are stored in; a feature without has no field.
  std::string_view attribute{};
  /// Where they are edited.
  TextDialog typed_in{};
};

/// The features that can be set for an object, in two tables. A new feature is a row in one of
/// them.
struct FeatureTable {
  /// Features that are on or off and nothing else.
  std::span<const std::string_view> plain;
  std::span<const FeatureWithProps> with_props;

  /// Every name of both tables, in the order in which they are listed.
  [[nodiscard]] StringSet Names() const;
  [[nodiscard]] bool IsPlain(std::string_view name) const;
  /// Null when the feature has no properties that could be made.
  [[nodiscard]] FeaturePropsFactory FactoryOf(std::string_view name) const;
};

/// The features of the groupware server.
[[nodiscard]] const FeatureTable& ServerFeatures();

}  // namespace pelora
