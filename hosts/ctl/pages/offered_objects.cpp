// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/pages/offered_objects.h"

#include "hosts/ldap/ads_path.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/session/search_filter.h"

namespace pelora::ctl {

bool OfferedObjects::operator()(const HeadlessChoosers::Object& object,
                                const ObjectPickerScope* scope) {
  if (store_ == nullptr) return false;
  const std::string filter =
      scope != nullptr ? session::TypeFilter(*scope) : session::ContainerFilter();
  const auto known = known_.find({filter, object.dn});
  if (known != known_.end()) return known->second;
  bool is_offered = false;
  ldap::StoreStatus status = store_->Search({.base = object.dn,
                                             .scope = ldap::SearchScope::kBase,
                                             .filter = filter,
                                             .attributes = {"objectClass"}},
                                            [&is_offered](const ldap::Entry& /*entry*/) {
                                              is_offered = true;
                                              return true;
                                            });
  if (status.Ok()) known_.emplace(std::pair(filter, object.dn), is_offered);
  if (!status.Ok() && status.code != ldap::kLdapNoSuchObject) failure_ = std::move(status);
  return is_offered;
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
