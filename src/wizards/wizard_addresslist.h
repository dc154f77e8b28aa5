// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "wizards/wizard_create.h"
#include "wizards/wizard_page.h"

namespace pelora {

/// The first page of the wizard for address lists.
class CWizardAddresslist : public CWizardPage<CWizardCreate> {
 public:
  explicit CWizardAddresslist(const Platform& platform);

 protected:
  ~CWizardAddresslist() override = default;
};

}  // namespace pelora
