// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/windows/com/com_co_class.h"
#include "hosts/windows/com/provide_class_info.h"
#include "hosts/windows/com/snap_in_property_page.h"

namespace pelora::windows {

/// The system's face of a property tab: it forwards the console's calls to the tab's ports. All
/// that a tab does is done behind them.
class PropertyPageShell : public CComObjectRootEx,
                          public CComCoClass<PropertyPageShell>,
                          public CSnapInPropertyPageImpl<PropertyPageShell>,
                          public ::IShellExtInit,
                          public ::IShellPropSheetExt,
                          public IProvideClassInfoImpl<PropertyPageShell> {
 public:
  using Interfaces = InterfaceList<::IShellExtInit, ::IShellPropSheetExt, ::IProvideClassInfo>;

  PropertyPageShell(const ModuleContext& context, const ComponentClass& component_class,
                    Ref<pelora::IShellExtInit> init, Ref<pelora::IShellPropSheetExt> pages);

  /// `E_NOINTERFACE` when the class is no property tab.
  [[nodiscard]] static HRESULT CreateInstance(const ModuleContext& context,
                                              const ComponentClass& component_class, REFIID iid,
                                              void** object);

  /// Only the data object is looked at.
  STDMETHODIMP Initialize(LPCITEMIDLIST folder, ::IDataObject* data_object, HKEY key) override;
  /// Follows the operations of the first interface, as it always has: tells the sheet whether the
  /// tab has changes. The tab itself does so on its own side of the ports.
  virtual void STDMETHODCALLTYPE SetModified(BOOL modified);
  STDMETHODIMP AddPages(LPFNADDPROPSHEETPAGE add, LPARAM parameter) override;
  /// The console replaces no page.
  STDMETHODIMP ReplacePage(EXPPS page, LPFNADDPROPSHEETPAGE replace, LPARAM parameter) override;

 private:
  friend CSnapInPropertyPageImpl<PropertyPageShell>;
  friend IProvideClassInfoImpl<PropertyPageShell>;

  [[nodiscard]] ::IUnknown* GetIdentity() { return static_cast<::IShellExtInit*>(this); }

  Ref<pelora::IShellExtInit> init_;
  Ref<pelora::IShellPropSheetExt> pages_;
};

}  // namespace pelora::windows
