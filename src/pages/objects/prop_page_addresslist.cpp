// SPDX-License-Identifier: Apache-2.0
#include "pages/objects/prop_page_addresslist.h"

#include "resources/resource.h"

namespace pelora {

CPropPageAddresslist::CPropPageAddresslist(const Platform& platform)
    : CSnapInPropertyPage(platform, IID_IADs, {}, IDD_PROPPAGE_ADDRESSLIST, "Pelora"),
      account_(*this),
      search_(*this) {
  Add(account_);
  Add(search_);
}

}  // namespace pelora
