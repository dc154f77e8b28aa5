// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/support/sheet_window.h"

#include <array>

#include "hosts/windows/values/wide_text.h"

namespace pelora::windows::test {
namespace {

constexpr int kApplyButton = 0x3021;
constexpr UINT_PTR kWatch = 1;

}  // namespace

SheetWindow::SheetWindow(std::vector<HPROPSHEETPAGE> pages, DWORD flags) {
  PROPSHEETHEADERW header = {};
  header.dwSize = sizeof(header);
  header.dwFlags = PSH_MODELESS | flags;
  header.pszCaption = L"Properties";
  header.nPages = static_cast<UINT>(pages.size());
  header.phpage = pages.data();
  window_ = reinterpret_cast<HWND>(PropertySheetW(&header));
  Watch();
}

SheetWindow::~SheetWindow() {
  if (IsOpen()) ClickCancel();
  Destroy();
}

bool SheetWindow::IsOpen() const {
  return IsWindow(window_) != FALSE && SendMessageW(window_, PSM_GETCURRENTPAGEHWND, 0, 0) != 0;
}

HWND SheetWindow::Page() const {
  return reinterpret_cast<HWND>(SendMessageW(window_, PSM_GETCURRENTPAGEHWND, 0, 0));
}

void SheetWindow::SelectPage(std::size_t page) const {
  SendMessageW(window_, PSM_SETCURSEL, page, 0);
}

std::size_t SheetWindow::CurrentPage() const {
  const auto tabs = reinterpret_cast<HWND>(SendMessageW(window_, PSM_GETTABCONTROL, 0, 0));
  return static_cast<std::size_t>(SendMessageW(tabs, TCM_GETCURSEL, 0, 0));
}

std::string SheetWindow::TabText(std::size_t page) const {
  const auto tabs = reinterpret_cast<HWND>(SendMessageW(window_, PSM_GETTABCONTROL, 0, 0));
  std::array<wchar_t, 100> text{};
  TCITEMW item = {};
  item.mask = TCIF_TEXT;
  item.pszText = text.data();
  item.cchTextMax = static_cast<int>(text.size());
  SendMessageW(tabs, TCM_GETITEMW, page, reinterpret_cast<LPARAM>(&item));
  return ToNarrow(text.data());
}

bool SheetWindow::IsApplyEnabled() const {
  return IsWindowEnabled(GetDlgItem(window_, kApplyButton)) != FALSE;
}

void SheetWindow::Press(int button) {
  Watch();
  const HWND control = GetDlgItem(window_, button);
  if (IsWindowEnabled(control) == FALSE) return;
  SendMessageW(window_, WM_COMMAND, MAKEWPARAM(button, BN_CLICKED),
               reinterpret_cast<LPARAM>(control));
  HandleWaitingMessages();
}

void SheetWindow::ClickApply() { Press(kApplyButton); }
void SheetWindow::ClickOk() { Press(IDOK); }
void SheetWindow::ClickCancel() { Press(IDCANCEL); }

void SheetWindow::Watch() {
  SetWindowSubclass(Page(), &LookOn, kWatch, reinterpret_cast<DWORD_PTR>(this));
}

LRESULT CALLBACK SheetWindow::LookOn(HWND window, UINT message, WPARAM wide, LPARAM narrow,
                                     UINT_PTR /*id*/, DWORD_PTR sheet) {
  const LRESULT result = DefSubclassProc(window, message, wide, narrow);
  if (message == WM_NOTIFY) {
    const UINT code = reinterpret_cast<const NMHDR*>(narrow)->code;
    reinterpret_cast<SheetWindow*>(sheet)->answers_.push_back({code, result});
  }
  return result;
}

std::vector<LRESULT> SheetWindow::AnswersTo(UINT code) const {
  std::vector<LRESULT> results;
  for (const Answer& answer : answers_) {
    if (answer.code == code) results.push_back(answer.result);
  }
  return results;
}

}  // namespace pelora::windows::test
