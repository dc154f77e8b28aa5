// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/com/sheet_page.h"

#include <string>
#include <utility>

#include "hosts/windows/values/wide_text.h"

namespace pelora::windows {

SheetPage::SheetPage(Ref<::IUnknown> component, std::unique_ptr<PropSheetPage> page)
    : component_(std::move(component)),
      page_(std::move(page)),
      host_(page_->Controller(), DialogRole::kPage) {}

HPROPSHEETPAGE SheetPage::Create(HINSTANCE instance, Ref<::IUnknown> component,
                                 std::unique_ptr<PropSheetPage> page) {
  const auto sheet_page = std::make_shared<SheetPage>(std::move(component), std::move(page));
  return sheet_page->MakeSystemPage(instance);
}

HPROPSHEETPAGE SheetPage::MakeSystemPage(HINSTANCE instance) {
  const std::wstring title = ToWide(page_->Title());
  PROPSHEETPAGEW description = {};
  description.dwSize = sizeof(description);
  description.dwFlags = PSP_USECALLBACK;
  description.hInstance = instance;
  description.pszTemplate = MAKEINTRESOURCEW(page_->Template());
  if (!title.empty()) {
    description.dwFlags |= PSP_USETITLE;
    description.pszTitle = title.c_str();
  }
  description.pfnDlgProc = &OnDialogMessage;
  description.pfnCallback = &OnLifeCallback;
  description.lParam = reinterpret_cast<LPARAM>(this);

  held_by_system_ = shared_from_this();
  const HPROPSHEETPAGE made = CreatePropertySheetPageW(&description);
  if (made == nullptr) held_by_system_.reset();
  return made;
}

UINT CALLBACK SheetPage::OnLifeCallback(HWND /*window*/, UINT message,
                                        PROPSHEETPAGEW* page) noexcept {
  auto* const sheet_page = reinterpret_cast<SheetPage*>(page->lParam);
  if (message == PSPCB_RELEASE) {
    // The last hold goes with this one, unless a message of the page is still being handled.
    const std::shared_ptr<SheetPage> released = std::move(sheet_page->held_by_system_);
  }
  return TRUE;
}

INT_PTR CALLBACK SheetPage::OnDialogMessage(HWND window, UINT message, WPARAM wide,
                                            LPARAM narrow) noexcept {
  if (message == WM_INITDIALOG) {
    const auto* const description = reinterpret_cast<const PROPSHEETPAGEW*>(narrow);
    SetWindowLongPtrW(window, DWLP_USER, description->lParam);
  }
  auto* const page = reinterpret_cast<SheetPage*>(GetWindowLongPtrW(window, DWLP_USER));
  if (page == nullptr) return FALSE;
  const std::shared_ptr<SheetPage> kept = page->shared_from_this();
  return kept->host_.OnMessage(window, message, wide, narrow);
}

}  // namespace pelora::windows
