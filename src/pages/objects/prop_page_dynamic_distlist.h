// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/prop_page_ext_dynamic.h"
#include "pages/prop_page_ext_pelora.h"
#include "pages/prop_page_ext_person.h"
#include "pages/snap_in_property_page.h"

namespace pelora {

/// The groupware's tab of dynamic distribution lists: search base and query, e-mail addresses and
/// the account boxes. It has no list of delegates and leaves them alone.
class CPropPageDynamicDistlist final : public CSnapInPropertyPage {
 public:
  explicit CPropPageDynamicDistlist(const Platform& platform);

 private:
  ~CPropPageDynamicDistlist() override = default;

  CPropPageExtDynamic search_;
  CPropPageExtPerson person_;
  CPropPageExtPelora account_;
};

}  // namespace pelora
