// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/windows/com/com_co_class.h"
#include "hosts/windows/com/provide_class_info.h"
#include "hosts/windows/com/snap_in_property_page.h"
#include "hosts/windows/module/loader_reference.h"
#include "hosts/windows/wizard_headers.h"
#include "platform/new_object_wizard.h"

namespace pelora::windows {

/// The system's face of a wizard page: it forwards the console's calls to the wizard's port.
///
/// When the console releases the page, the wizard ends and the lock on the module is given up,
/// whatever references the console holds: calls through them answer `E_UNEXPECTED` from then on.
/// The code that they lead to stays in memory until the last of them is given back.
class WizardShell : public CComObjectRootEx,
                    public CComCoClass<WizardShell>,
                    public CSnapInPropertyPageImpl<WizardShell>,
                    public ::IDsAdminNewObjExt,
                    public IProvideClassInfoImpl<WizardShell> {
 public:
  using Interfaces = InterfaceList<::IDsAdminNewObjExt, ::IProvideClassInfo>;

  WizardShell(const ModuleContext& context, const ComponentClass& component_class,
              Ref<pelora::IDsAdminNewObjExt> wizard);

  /// `E_NOINTERFACE` when the class is no wizard page.
  [[nodiscard]] static HRESULT CreateInstance(const ModuleContext& context,
                                              const ComponentClass& component_class, REFIID iid,
                                              void** object);

  /// Only the wizard and the display information are looked at.
  STDMETHODIMP Initialize(::IADsContainer* container, ::IADs* copy_source, LPCWSTR class_name,
                          ::IDsAdminNewObj* wizard, LPDSA_NEWOBJ_DISPINFO display_info) override;
  STDMETHODIMP AddPages(LPFNADDPROPSHEETPAGE add, LPARAM parameter) override;
  STDMETHODIMP SetObject(::IADs* object) override;
  /// The window is not used: boxes belong to the page's own.
  STDMETHODIMP WriteData(HWND window, ULONG phase) override;
  STDMETHODIMP OnError(HWND window, HRESULT status, ULONG phase) override;
  /// The caller frees the text.
  STDMETHODIMP GetSummaryInfo(BSTR* text) override;

 private:
  class Page;
  friend CSnapInPropertyPageImpl<WizardShell>;
  friend IProvideClassInfoImpl<WizardShell>;

  [[nodiscard]] ::IUnknown* GetIdentity() { return static_cast<::IDsAdminNewObjExt*>(this); }
  void OnPageReleased();

  /// From the page's release on, as long as somebody else holds the shell.
  LoaderReference code_;
  /// None once the page has been released: the wizard went with it.
  Ref<pelora::IDsAdminNewObjExt> wizard_;
  bool is_adding_page_ = false;
};

}  // namespace pelora::windows
