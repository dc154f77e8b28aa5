// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/pages/offered_objects.h"

#include "hosts/ldap/ads_path.h"
#include "hosts/session/search_filter.h"

namespace pelora::ctl {

bool OfferedObjects::operator()(const HeadlessChoosers::Object& object,
                                const ObjectPickerScope* scope) {
  if (store_ == nullptr) return false;
  const std::string filter =
      scope != nullptr ? session::TypeFilter(*scope) : session::ContainerFilter();
  const auto [known, is_new] = known_.try_emplace({filter, object.dn}, false);
  if (!is_new) return known->second;
  const ldap::StoreStatus status = store_->Search({.base = object.dn,
                                                   .scope = ldap::SearchScope::kBase,
                                                   .filter = filter,
                                                   .attributes = {"objectClass"}},
                                                  [&known](const ldap::Entry& /*entry*/) {
                                                    known->second = true;
                                                    return true;
                                                  });
  return status.Ok() && known->second;
}

std::vector<HeadlessChoosers::Object> ToGiven(
    const std::vector<session::DirectoryObject>& objects) {
  std::vector<HeadlessChoosers::Object> given;
  given.reserve(objects.size());
  for (const session::DirectoryObject& object : objects) {
    given.push_back({.dn = object.dn,
                     .path = ldap::AdsPathOf(object.dn),
                     .name = object.name,
                     .object_class = object.kind.class_name,
                     .is_container = object.kind.is_container});
  }
  return given;
}

}  // namespace pelora::ctl
