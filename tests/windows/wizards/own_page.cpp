// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/wizards/own_page.h"

namespace pelora::windows::test {

HPROPSHEETPAGE OwnPage::Make() {
  PROPSHEETPAGEW page = {};
  page.dwSize = sizeof(page);
  page.dwFlags = PSP_DLGINDIRECT | PSP_USETITLE;
  page.pResource = reinterpret_cast<LPCDLGTEMPLATEW>(&template_);
  page.pszTitle = L"New Object";
  page.pfnDlgProc = &OnMessage;
  page.lParam = reinterpret_cast<LPARAM>(this);
  return CreatePropertySheetPageW(&page);
}

INT_PTR CALLBACK OwnPage::OnMessage(HWND window, UINT message, WPARAM /*wide*/, LPARAM narrow) {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrW(window, DWLP_USER, reinterpret_cast<const PROPSHEETPAGEW*>(narrow)->lParam);
    return TRUE;
  }
  auto* const page = reinterpret_cast<OwnPage*>(GetWindowLongPtrW(window, DWLP_USER));
  if (page == nullptr || message != WM_NOTIFY) return FALSE;
  const LRESULT answer = page->OnNotification(*reinterpret_cast<const NMHDR*>(narrow));
  SetWindowLongPtrW(window, DWLP_MSGRESULT, answer);
  return TRUE;
}

LRESULT OwnPage::OnNotification(const NMHDR& notification) {
  constexpr LRESULT kStay = -1;
  switch (static_cast<int>(notification.code)) {
    case static_cast<int>(PSN_SETACTIVE):
      events_.OnShown(notification.hwndFrom, is_last_);
      return 0;
    case static_cast<int>(PSN_WIZNEXT):
      return events_.OnNext() ? 0 : kStay;
    case static_cast<int>(PSN_WIZFINISH):
      return events_.OnFinish() ? FALSE : TRUE;
    default:
      return 0;
  }
}

}  // namespace pelora::windows::test
