// SPDX-License-Identifier: Apache-2.0
#include "pages/objects/prop_page_dynamic_distlist.h"

#include <array>

#include "resources/resource.h"

namespace pelora {
namespace {

/// There is no list of delegates on the tab.
constexpr std::array<ControlId, 3> kLackingControls = {IDC_SENDAS_LIST, IDC_SENDAS_ADD,
                                                       IDC_SENDAS_DELETE};

}  // namespace

CPropPageDynamicDistlist::CPropPageDynamicDistlist(const Platform& platform)
    : CSnapInPropertyPage(platform, IID_IADs, {}, IDD_PROPPAGE_DYNAMIC_DISTLIST, "Pelora"),
      search_(*this),
      person_(*this, platform, false),
      account_(*this) {
  SetLackingControls(kLackingControls);
  Add(search_);
  Add(person_);
  Add(account_);
}

}  // namespace pelora
