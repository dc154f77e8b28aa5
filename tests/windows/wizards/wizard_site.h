// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>

#include "hosts/windows/wizard_headers.h"

namespace pelora::windows::test {

/// The console's wizard as its extensions see it. Lives on the stack of its test; a reference that
/// is not given back shows in `references`.
class WizardSite final : public ::IDsAdminNewObj, public ::IDsAdminNewObjPrimarySite {
 public:
  WizardSite() = default;
  virtual ~WizardSite() = default;
  WizardSite(const WizardSite&) = delete;
  WizardSite& operator=(const WizardSite&) = delete;

  std::function<void(ULONG page, bool valid)> on_buttons;
  std::function<HRESULT(const std::wstring& name)> on_create;
  /// Extensions are offered `IDsAdminNewObjPrimarySite`.
  bool is_primary = false;
  /// Who asks for that one is told that it is offered, and given nothing.
  bool offers_nothing = false;

  [[nodiscard]] ULONG references() const { return references_; }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override { return --references_; }
  STDMETHODIMP SetButtons(ULONG page, WINBOOL valid) override;
  STDMETHODIMP GetPageCounts(LONG* total, LONG* start) override;
  STDMETHODIMP CreateNew(LPCWSTR name) override;
  STDMETHODIMP Commit() override { return E_NOTIMPL; }

 private:
  ULONG references_ = 0;
};

}  // namespace pelora::windows::test
