// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/objects/prop_page_of_template.h"
#include "pages/prop_page_ext_pelora.h"
#include "pages/prop_page_ext_person.h"
#include "pages/snap_in_property_page.h"
#include "resources/resource.h"

namespace pelora {

/// Base of the tabs of objects that receive mail without being users: their addresses, who may send
/// in their name, and the account boxes. They need no address.
class CPropPageRecipient : public CSnapInPropertyPage {
 public:
  CPropPageRecipient(const Platform& platform, DialogId dialog_template);

 protected:
  ~CPropPageRecipient() override = default;

 private:
  CPropPageExtPerson person_;
  CPropPageExtPelora account_;
};

/// The tab of contacts.
using CPropPageContact = CPropPageOfTemplate<CPropPageRecipient, IDD_PROPPAGE_CONTACT>;
/// The tab of groups, the groupware's distribution lists.
using CPropPageDistlist = CPropPageOfTemplate<CPropPageRecipient, IDD_PROPPAGE_DISTLIST>;

}  // namespace pelora
