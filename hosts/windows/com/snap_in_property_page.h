// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/windows/com/module_context.h"
#include "hosts/windows/com/sheet_page.h"
#include "hosts/windows/guarded.h"

namespace pelora::windows {

/// Base of a component that puts pages into a property sheet or wizard. `Shell` is an object
/// (`CComObjectRootEx`); each of its pages holds a reference to it until the page is released.
template <class Shell>
class CSnapInPropertyPageImpl {
 protected:
  ~CSnapInPropertyPageImpl() = default;

  /// Lets `extension`, a port with `AddPages`, hand its pages to the sheet. Whatever the sheet
  /// answers, a page is its own from then on: shown or not, it lives until it is destroyed there.
  template <class Extension>
  [[nodiscard]] HRESULT AddPagesOf(Extension& extension, LPFNADDPROPSHEETPAGE add,
                                   LPARAM parameter) {
    if (add == nullptr) return E_INVALIDARG;
    return Guarded([&] {
      return extension.AddPages([&](std::unique_ptr<PropSheetPage> page) {
        return AddPage(std::move(page), add, parameter);
      });
    });
  }

 private:
  bool AddPage(std::unique_ptr<PropSheetPage> page, LPFNADDPROPSHEETPAGE add, LPARAM parameter) {
    auto& shell = static_cast<Shell&>(*this);
    const HPROPSHEETPAGE made = SheetPage::Create(
        shell.context().instance, Ref<::IUnknown>(shell.GetIdentity()), std::move(page));
    if (made == nullptr) return false;
    (void)add(made, parameter);
    return true;
  }
};

}  // namespace pelora::windows
