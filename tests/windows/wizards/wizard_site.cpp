// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/wizards/wizard_site.h"

namespace pelora::windows::test {

STDMETHODIMP WizardSite::QueryInterface(REFIID iid, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (IsEqualIID(iid, __uuidof(::IUnknown)) || IsEqualIID(iid, __uuidof(::IDsAdminNewObj))) {
    *object = static_cast<::IDsAdminNewObj*>(this);
  } else if (IsEqualIID(iid, __uuidof(::IDsAdminNewObjPrimarySite)) && offers_nothing) {
    return S_OK;
  } else if (IsEqualIID(iid, __uuidof(::IDsAdminNewObjPrimarySite)) && is_primary) {
    *object = static_cast<::IDsAdminNewObjPrimarySite*>(this);
  } else {
    return E_NOINTERFACE;
  }
  AddRef();
  return S_OK;
}

STDMETHODIMP WizardSite::SetButtons(ULONG page, WINBOOL valid) {
  if (on_buttons) on_buttons(page, valid != FALSE);
  return S_OK;
}

STDMETHODIMP WizardSite::GetPageCounts(LONG* total, LONG* start) {
  *total = 1;
  *start = 0;
  return S_OK;
}

STDMETHODIMP WizardSite::CreateNew(LPCWSTR name) {
  return on_create ? on_create(name) : E_UNEXPECTED;
}

}  // namespace pelora::windows::test
