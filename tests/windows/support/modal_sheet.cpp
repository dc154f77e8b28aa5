// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/support/modal_sheet.h"

namespace pelora::windows::test {
namespace {

constexpr UINT_PTR kTimer = 1;
constexpr UINT kMilliseconds = 10;

struct Waiting {
  const std::function<void(HWND)>& play;
  HWND owner;
  HWND sheet = nullptr;
};

BOOL CALLBACK FindSheet(HWND window, LPARAM parameter) {
  auto& waiting = *reinterpret_cast<Waiting*>(parameter);
  const bool is_sheet = IsWindowVisible(window) != FALSE &&
                        GetWindow(window, GW_OWNER) == waiting.owner &&
                        SendMessageW(window, PSM_GETCURRENTPAGEHWND, 0, 0) != 0;
  if (is_sheet) waiting.sheet = window;
  return is_sheet ? FALSE : TRUE;
}

void CALLBACK Look(HWND timer_window, UINT /*message*/, UINT_PTR /*timer*/, DWORD /*time*/) {
  auto& waiting = *reinterpret_cast<Waiting*>(GetWindowLongPtrW(timer_window, GWLP_USERDATA));
  if (waiting.sheet != nullptr) return;
  EnumThreadWindows(GetCurrentThreadId(), &FindSheet, reinterpret_cast<LPARAM>(&waiting));
  if (waiting.sheet != nullptr) waiting.play(waiting.sheet);
}

}  // namespace

INT_PTR RunModalSheet(const PROPSHEETHEADERW& header, const std::function<void(HWND sheet)>& play) {
  Waiting waiting{play, header.hwndParent};
  const HWND timer_window = CreateWindowExW(0, L"STATIC", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE,
                                            nullptr, nullptr, nullptr);
  SetWindowLongPtrW(timer_window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&waiting));
  SetTimer(timer_window, kTimer, kMilliseconds, &Look);
  const INT_PTR answer = PropertySheetW(&header);
  DestroyWindow(timer_window);
  return answer;
}

}  // namespace pelora::windows::test
