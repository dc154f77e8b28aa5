// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/extension/sheet_window.h"

namespace pelora::windows::test {
namespace {

constexpr int kApplyButton = 0x3021;
constexpr UINT_PTR kWatch = 1;

}  // namespace

SheetWindow::SheetWindow(std::vector<HPROPSHEETPAGE> pages) {
  PROPSHEETHEADERW header = {};
  header.dwSize = sizeof(header);
  header.dwFlags = PSH_MODELESS;
  header.pszCaption = L"Properties";
  header.nPages = static_cast<UINT>(pages.size());
  header.phpage = pages.data();
  window_ = reinterpret_cast<HWND>(PropertySheetW(&header));
  Watch();
}

SheetWindow::~SheetWindow() {
  if (IsOpen()) ClickCancel();
  DestroyWindow(window_);
}

bool SheetWindow::IsOpen() const {
  return IsWindow(window_) != FALSE && SendMessageW(window_, PSM_GETCURRENTPAGEHWND, 0, 0) != 0;
}

HWND SheetWindow::Page() const {
  return reinterpret_cast<HWND>(SendMessageW(window_, PSM_GETCURRENTPAGEHWND, 0, 0));
}

void SheetWindow::SelectPage(int page) const {
  SendMessageW(window_, PSM_SETCURSEL, static_cast<WPARAM>(page), 0);
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
