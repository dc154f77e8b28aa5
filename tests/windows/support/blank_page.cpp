// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/support/blank_page.h"

namespace pelora::windows::test {
namespace {

INT_PTR CALLBACK DoNothing(HWND /*window*/, UINT /*message*/, WPARAM /*wide*/, LPARAM /*narrow*/) {
  return FALSE;
}

}  // namespace

HPROPSHEETPAGE BlankPage::Make() {
  PROPSHEETPAGEW page = {};
  page.dwSize = sizeof(page);
  page.dwFlags = PSP_DLGINDIRECT | PSP_USETITLE;
  page.pResource = &template_.head;
  page.pszTitle = L"Blank";
  page.pfnDlgProc = &DoNothing;
  return CreatePropertySheetPageW(&page);
}

}  // namespace pelora::windows::test
