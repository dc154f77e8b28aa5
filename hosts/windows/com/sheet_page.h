// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include "hosts/windows/dialogs/dialog_host.h"
#include "platform/shell_extension.h"
#include "platform/unknown.h"

namespace pelora::windows {

/// One page of a property sheet or wizard of the system's, made from a page of the ports.
///
/// It lives from `Create` until the system says that the sheet's page is released, be it shown,
/// never shown, or refused; so long it holds the page and a reference to the component that the
/// page belongs to.
class SheetPage : public std::enable_shared_from_this<SheetPage> {
 public:
  SheetPage(Ref<::IUnknown> component, std::unique_ptr<PropSheetPage> page);
  SheetPage(const SheetPage&) = delete;
  SheetPage& operator=(const SheetPage&) = delete;

  /// Makes the sheet's page, with a template of the module `instance`. Null when the system does
  /// not make it; nothing is held any more then.
  [[nodiscard]] static HPROPSHEETPAGE Create(HINSTANCE instance, Ref<::IUnknown> component,
                                             std::unique_ptr<PropSheetPage> page);

 private:
  [[nodiscard]] HPROPSHEETPAGE MakeSystemPage(HINSTANCE instance);
  static UINT CALLBACK OnLifeCallback(HWND window, UINT message, PROPSHEETPAGEW* page) noexcept;
  static INT_PTR CALLBACK OnDialogMessage(HWND window, UINT message, WPARAM wide,
                                          LPARAM narrow) noexcept;

  // The component goes last: its module must not be unloaded before.
  Ref<::IUnknown> component_;
  std::unique_ptr<PropSheetPage> page_;
  DialogHost host_;
  /// The system's hold on this object.
  std::shared_ptr<SheetPage> held_by_system_;
};

}  // namespace pelora::windows
