// SPDX-License-Identifier: Apache-2.0
#include "pages/objects/prop_page_dynamic_distlist.h"

#include "resources/resource.h"

namespace pelora {

CPropPageDynamicDistlist::CPropPageDynamicDistlist(const Platform& platform)
    : CSnapInPropertyPage(platform, IID_IADs, {}, IDD_PROPPAGE_DYNAMIC_DISTLIST, "Pelora"),
      search_(*this, platform),
      person_(*this, platform, false),
      account_(*this) {
  Route(search_.Commands());
  Route(person_.AddressCommands());
  Route(account_.Commands());
}

}  // namespace pelora
