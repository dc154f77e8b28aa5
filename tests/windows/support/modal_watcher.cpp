// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/support/modal_watcher.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace pelora::windows::test {
namespace {

constexpr const wchar_t* kTimerClass = L"PeloraModalWatcher";
constexpr UINT_PTR kTimer = 1;
constexpr UINT kMilliseconds = 10;

bool IsShownDialog(HWND window) {
  std::array<wchar_t, 16> name{};
  GetClassNameW(window, name.data(), name.size());
  const bool is_sheet = FindWindowExW(window, nullptr, WC_TABCONTROLW, nullptr) != nullptr;
  return std::wstring_view(name.data()) == L"#32770" && !is_sheet &&
         IsWindowVisible(window) != FALSE;
}

BOOL CALLBACK Collect(HWND window, LPARAM dialogs) {
  if (IsShownDialog(window)) reinterpret_cast<std::set<HWND>*>(dialogs)->insert(window);
  return TRUE;
}

}  // namespace

std::set<HWND> ShownDialogs() {
  std::set<HWND> dialogs;
  EnumThreadWindows(GetCurrentThreadId(), &Collect, reinterpret_cast<LPARAM>(&dialogs));
  return dialogs;
}

ModalWatcher::ModalWatcher(Action action) : action_(std::move(action)), known_(ShownDialogs()) {
  WNDCLASSW window_class = {};
  window_class.lpfnWndProc = &OnMessage;
  window_class.hInstance = GetModuleHandleW(nullptr);
  window_class.lpszClassName = kTimerClass;
  RegisterClassW(&window_class);
  timer_window_ = CreateWindowExW(0, kTimerClass, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                  window_class.hInstance, nullptr);
  SetWindowLongPtrW(timer_window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  SetTimer(timer_window_, kTimer, kMilliseconds, nullptr);
}

ModalWatcher::~ModalWatcher() { DestroyWindow(timer_window_); }

LRESULT CALLBACK ModalWatcher::OnMessage(HWND window, UINT message, WPARAM wide, LPARAM narrow) {
  if (message != WM_TIMER) return DefWindowProcW(window, message, wide, narrow);
  reinterpret_cast<ModalWatcher*>(GetWindowLongPtrW(window, GWLP_USERDATA))->Look();
  return 0;
}

void ModalWatcher::Look() {
  std::erase_if(known_, [](HWND window) { return IsWindow(window) == FALSE; });
  for (const HWND dialog : ShownDialogs()) {
    if (IsWindowEnabled(dialog) != FALSE && known_.insert(dialog).second) action_(dialog);
  }
}

}  // namespace pelora::windows::test
