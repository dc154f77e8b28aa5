// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/objects/prop_page_of_template.h"
#include "pages/prop_page_ext_name.h"
#include "pages/snap_in_property_page.h"
#include "resources/resource.h"

namespace pelora {

/// Base of the General tabs of the groupware's own objects, for which the console has none: name
/// and description.
class CPropPageGeneral : public CSnapInPropertyPage {
 public:
  CPropPageGeneral(const Platform& platform, DialogId dialog_template)
      : CSnapInPropertyPage(platform, IID_IADs, {}, dialog_template, "General"), name_(*this) {
    Add(name_);
  }

 protected:
  ~CPropPageGeneral() override = default;

 private:
  CPropPageExtName name_;
};

/// The General tab of address lists.
using CPropPageAddresslistGeneral =
    CPropPageOfTemplate<CPropPageGeneral, IDD_PROPPAGE_ADDRESSLIST_GENERAL>;
/// The General tab of dynamic distribution lists.
using CPropPageDynamicDistlistGeneral =
    CPropPageOfTemplate<CPropPageGeneral, IDD_PROPPAGE_DYNAMIC_DISTLIST_GENERAL>;

}  // namespace pelora
