// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "wizards/wizard_extension.h"
#include "wizards/wizard_page.h"

namespace pelora {

/// The page of the wizard for computers: how a groupware server is reached. Ports and socket file
/// have defaults; an address and one port at least are needed.
class CWizardExtServer : public CWizardPage<CWizardExtension> {
 public:
  explicit CWizardExtServer(const Platform& platform);

 protected:
  ~CWizardExtServer() override = default;

 private:
  HRESULT Load(const BoundObjects& objects);
  HRESULT Collect(ChangeList& changes);
  HRESULT Validate(std::string* message);
};

}  // namespace pelora
