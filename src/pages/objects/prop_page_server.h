// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/edited_fields.h"
#include "pages/snap_in_property_page.h"

namespace pelora {

/// The tab of computers, which makes a computer a server of the groupware and says how clients
/// reach it. A server needs an address, one of its ports and a file path, be it enabled or not.
///
/// The address and whether it holds the public store are written on every apply to one server,
/// touched or not, and never to several.
class CPropPageServer final : public CSnapInPropertyPage {
 public:
  explicit CPropPageServer(const Platform& platform);

 private:
  ~CPropPageServer() override = default;

  EditedFields fields_;
};

}  // namespace pelora
