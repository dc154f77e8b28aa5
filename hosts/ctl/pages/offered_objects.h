// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "hosts/headless/headless_choosers.h"
#include "hosts/ldap/directory_store.h"
#include "hosts/session/directory_browser.h"

namespace pelora::ctl {

/// What choosers would have offered of a directory (`HeadlessChoosers::Offer`); each object is
/// looked for once, unless that fails.
class OfferedObjects {
 public:
  /// `store` outlives the object; without one nothing is offered.
  explicit OfferedObjects(ldap::IDirectoryStore* store) : store_(store) {}

  bool operator()(const HeadlessChoosers::Object& object, const ObjectPickerScope* scope);
  /// What kept objects from being looked for, since the last time; success when nothing did.
  [[nodiscard]] ldap::StoreStatus TakeFailure() { return std::exchange(failure_, {}); }

 private:
  ldap::IDirectoryStore* store_;
  ldap::StoreStatus failure_;
  std::map<std::pair<std::string, std::string>, bool> known_;
};

/// Objects as they are given to choosers.
[[nodiscard]] std::vector<HeadlessChoosers::Object> ToGiven(
    const std::vector<session::DirectoryObject>& objects);

}  // namespace pelora::ctl
