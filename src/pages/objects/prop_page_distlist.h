// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/objects/prop_page_recipient.h"
#include "resources/resource.h"

namespace pelora {

/// The tab of groups, the groupware's distribution lists.
class CPropPageDistlist final : public CPropPageRecipient {
 public:
  explicit CPropPageDistlist(const Platform& platform)
      : CPropPageRecipient(platform, IDD_PROPPAGE_DISTLIST) {}

 private:
  ~CPropPageDistlist() override = default;
};

}  // namespace pelora
