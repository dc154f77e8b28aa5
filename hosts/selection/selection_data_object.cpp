// SPDX-License-Identifier: Apache-2.0
#include "hosts/selection/selection_data_object.h"

#include <utility>

#include "hosts/selection/block_data_object.h"

namespace pelora {

Ref<IDataObject> MakeSelectedObjects(std::vector<SelectedObject> objects) {
  return MakeBlockDataObject(kDsObjectNamesFormat,
                             [objects = std::move(objects)] { return MakeDsObjectNames(objects); });
}

Ref<IDataObject> MakeChosenObjects(std::vector<ChosenObject> objects) {
  return MakeBlockDataObject(kDsSelectionListFormat, [objects = std::move(objects)] {
    return MakeDsSelectionList(objects);
  });
}

}  // namespace pelora
