// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/selection_data_object.h"

#include <utility>

#include "hosts/ldap/ads_path.h"
#include "hosts/selection/selection_data_object.h"

namespace pelora::session {

Ref<IDataObject> MakeSelectionDataObject(std::span<const DirectoryObject> selection) {
  std::vector<SelectedObject> selected;
  selected.reserve(selection.size());
  for (const DirectoryObject& object : selection) {
    selected.push_back({.path = ldap::AdsPathOf(object.dn),
                        .object_class = object.kind.class_name,
                        .is_container = object.kind.is_container});
  }
  return MakeSelectedObjects(std::move(selected));
}

Ref<IDataObject> MakeChosenDataObject(std::span<const DirectoryObject> objects) {
  std::vector<ChosenObject> chosen;
  chosen.reserve(objects.size());
  for (const DirectoryObject& object : objects) {
    chosen.push_back({.path = ldap::AdsPathOf(object.dn),
                      .name = object.name,
                      .object_class = object.kind.class_name});
  }
  return MakeChosenObjects(std::move(chosen));
}

}  // namespace pelora::session
