// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/prop_page_ext_pelora.h"
#include "pages/snap_in_property_page.h"

namespace pelora {

/// The tab of user objects.
class CPropPageUser final : public CSnapInPropertyPage {
 public:
  explicit CPropPageUser(const Platform& platform);

 private:
  ~CPropPageUser() override = default;

  CPropPageExtPelora account_;
};

}  // namespace pelora
