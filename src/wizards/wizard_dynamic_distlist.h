// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "wizards/wizard_create.h"
#include "wizards/wizard_page.h"

namespace pelora {

/// The first page of the wizard for dynamic distribution lists.
class CWizardDynamicDistlist : public CWizardPage<CWizardCreate> {
 public:
  explicit CWizardDynamicDistlist(const Platform& platform);

 protected:
  ~CWizardDynamicDistlist() override = default;
};

}  // namespace pelora
