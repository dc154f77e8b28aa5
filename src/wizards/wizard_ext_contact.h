// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "wizards/wizard_extension.h"
#include "wizards/wizard_page.h"

namespace pelora {

/// The page of the wizard for contacts: visibility and e-mail address, which a groupware contact
/// needs.
class CWizardExtContact : public CWizardPage<CWizardExtension> {
 public:
  explicit CWizardExtContact(const Platform& platform);

 protected:
  ~CWizardExtContact() override = default;

 private:
  HRESULT Collect(ChangeList& changes);
  HRESULT Validate(std::string* message);
};

}  // namespace pelora
