// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "wizards/wizard_extension.h"
#include "wizards/wizard_page.h"

namespace pelora {

/// The page of the wizard for groups, which the groupware takes for distribution lists: visibility
/// and e-mail address. Unlike a contact a group needs no address.
class CWizardExtDistlist : public CWizardPage<CWizardExtension> {
 public:
  explicit CWizardExtDistlist(const Platform& platform);

 protected:
  ~CWizardExtDistlist() override = default;

 private:
  HRESULT Collect(ChangeList& changes);
};

}  // namespace pelora
