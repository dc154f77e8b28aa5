// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/name_list.h"
#include "pages/snap_in_property_page.h"

namespace pelora {

/// The rights tab of companies: the companies that may view this one, and the users who may
/// administer it. Of several companies nothing of this is shown or written.
class CPropPageCompanyRights final : public CSnapInPropertyPage {
 public:
  explicit CPropPageCompanyRights(const Platform& platform);

 private:
  ~CPropPageCompanyRights() override = default;

  NameList viewers_;
  NameList administrators_;
};

}  // namespace pelora
