// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/objects/prop_page_ext_user.h"
#include "pages/prop_page_ext_pelora.h"
#include "pages/prop_page_ext_person.h"
#include "pages/prop_page_ext_quota.h"
#include "pages/snap_in_property_page.h"

namespace pelora {

/// The tab of user objects: e-mail addresses, quota, account boxes, and what there is of users
/// alone.
class CPropPageUser final : public CSnapInPropertyPage {
 public:
  explicit CPropPageUser(const Platform& platform);

 private:
  ~CPropPageUser() override = default;

  CPropPageExtPerson person_;
  CPropPageExtQuota quota_;
  CPropPageExtPelora account_;
  CPropPageExtUser user_;
};

}  // namespace pelora
