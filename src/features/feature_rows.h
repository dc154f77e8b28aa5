// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "features/feature_table.h"
#include "platform/field_rows.h"

namespace pelora {

/// The fields of the list of features, in its order: a choice for each plain feature
/// ("feature.NAME"), the attribute of each feature with properties. `features` outlives the rows.
[[nodiscard]] std::vector<FieldRow> FeatureRows(const FeatureTable& features);

}  // namespace pelora
