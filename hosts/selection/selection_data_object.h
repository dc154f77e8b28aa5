// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "directory/ds_object_names.h"
#include "directory/ds_selection_list.h"
#include "platform/data_object.h"

namespace pelora {

/// Selected objects in the format `kDsObjectNamesFormat` and no other: one reference, the caller's.
[[nodiscard]] Ref<IDataObject> MakeSelectedObjects(std::vector<SelectedObject> objects);

/// What an object picker hands over, in the format `kDsSelectionListFormat` and no other: one
/// reference, the caller's.
[[nodiscard]] Ref<IDataObject> MakeChosenObjects(std::vector<ChosenObject> objects);

}  // namespace pelora
