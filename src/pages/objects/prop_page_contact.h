// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/objects/prop_page_recipient.h"
#include "resources/resource.h"

namespace pelora {

/// The tab of contacts.
class CPropPageContact final : public CPropPageRecipient {
 public:
  explicit CPropPageContact(const Platform& platform)
      : CPropPageRecipient(platform, IDD_PROPPAGE_CONTACT) {}

 private:
  ~CPropPageContact() override = default;
};

}  // namespace pelora
