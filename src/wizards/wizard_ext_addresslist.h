// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "wizards/wizard_extension.h"
#include "wizards/wizard_page.h"

namespace pelora {

/// The second page of the wizard for address lists: visibility, search base and search query. The
/// base is chosen, never typed; only the query is needed.
class CWizardExtAddresslist : public CWizardPage<CWizardExtension> {
 public:
  explicit CWizardExtAddresslist(const Platform& platform);

 protected:
  ~CWizardExtAddresslist() override = default;

 private:
  HRESULT Collect(ChangeList& changes);
  HRESULT Validate(std::string* message);

  std::int32_t OnSelectBase();
};

}  // namespace pelora
