// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/edited_fields.h"
#include "pages/prop_page_ext_pelora.h"
#include "pages/snap_in_property_page.h"

namespace pelora {

/// The first tab of companies (organisational units): the account boxes, the system administrator
/// and the home server, which are chosen and cannot be typed or removed.
class CPropPageCompany final : public CSnapInPropertyPage {
 public:
  explicit CPropPageCompany(const Platform& platform);

 private:
  ~CPropPageCompany() override = default;

  CPropPageExtPelora account_;
  EditedFields fields_;
};

}  // namespace pelora
