// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/prop_page_ext_name.h"
#include "pages/snap_in_property_page.h"

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

}  // namespace pelora
