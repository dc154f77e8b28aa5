// SPDX-License-Identifier: Apache-2.0
#include "hosts/sheets/wizard_site.h"

namespace pelora::sheets {

HRESULT WizardSite::QueryInterface(const Guid& iid, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (iid == IID_IDsAdminNewObj || iid == IID_IUnknown) {
    *object = static_cast<IDsAdminNewObj*>(this);
  } else if (iid == IID_IDsAdminNewObjPrimarySite && is_primary_) {
    *object = static_cast<IDsAdminNewObjPrimarySite*>(this);
  } else {
    return E_NOINTERFACE;
  }
  AddRef();
  return S_OK;
}

HRESULT WizardSite::SetButtons(std::uint32_t page_index, bool valid) {
  if (owner_ == nullptr) return E_UNEXPECTED;
  owner_->SetButtons(extension_, page_index, valid);
  return S_OK;
}

HRESULT WizardSite::GetPageCounts(std::int32_t& total, std::int32_t& start_index) {
  if (owner_ == nullptr) return E_UNEXPECTED;
  owner_->GetPageCounts(extension_, total, start_index);
  return S_OK;
}

HRESULT WizardSite::CreateNew(const std::string& name) {
  return owner_ != nullptr ? owner_->CreateNew(name) : E_UNEXPECTED;
}

}  // namespace pelora::sheets
