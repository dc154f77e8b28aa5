// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "wizards/wizard_extension.h"
#include "wizards/wizard_page.h"

namespace pelora {

/// The page of the wizard for organisational units, which the groupware takes for companies:
/// visibility, home server and system administrator.
class CWizardExtCompany : public CWizardPage<CWizardExtension> {
 public:
  explicit CWizardExtCompany(const Platform& platform);

 protected:
  ~CWizardExtCompany() override = default;

 private:
  HRESULT Collect(ChangeList& changes);

  std::int32_t OnSelectServer();
  std::int32_t OnSelectSystemAdmin();
};

}  // namespace pelora
