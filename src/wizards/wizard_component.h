// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "wizards/wizard_base.h"

namespace pelora {

/// The component object of a wizard class: answers for its interfaces. Made with one reference,
/// which its maker holds.
template <class Wizard>
class CWizardComponent final : public Wizard {
 public:
  explicit CWizardComponent(const Platform& platform) : Wizard(platform) { this->AddRef(); }

  HRESULT QueryInterface(const Guid& iid, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (iid == IID_IDsAdminNewObjExt || iid == IID_IUnknown) {
      *object = static_cast<IDsAdminNewObjExt*>(this);
    } else if (iid == IID_IFieldRows) {
      *object = static_cast<IFieldRows*>(this);
    } else {
      return E_NOINTERFACE;
    }
    this->AddRef();
    return S_OK;
  }

 private:
  ~CWizardComponent() override = default;
};

}  // namespace pelora
