// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/win32_component_library.h"

#include <utility>

#include "hosts/windows/module/loader_reference.h"

namespace pelora::windows {
namespace {

/// Carries the loader's reference that keeps this code until the message has been handled.
constexpr UINT kGiveBack = WM_APP;

/// Whether a thread's window is still its own: threads end, and their numbers are used again.
bool Stands(HWND window, DWORD thread) {
  return window != nullptr && GetWindowThreadProcessId(window, nullptr) == thread;
}

}  // namespace

LibraryThread Win32ComponentLibrary::CoInitialize() {
  const DWORD thread = GetCurrentThreadId();
  const std::lock_guard lock(mutex_);
  Counts& counts = counts_[thread];
  if (FAILED(::CoInitialize(nullptr))) {
    if (counts.number == 0) counts_.erase(thread);
    return kNoThread;
  }
  if (!Stands(counts.window, thread)) counts = {.window = MakeWindow()};
  ++counts.number;
  return thread;
}

void Win32ComponentLibrary::CoUninitialize(LibraryThread thread) {
  if (thread == kNoThread) return;
  if (thread == GetCurrentThreadId()) {
    GiveBackHere();
  } else {
    GiveBackOn(thread);
  }
}

void Win32ComponentLibrary::GiveBackHere() {
  {
    const std::lock_guard lock(mutex_);
    const auto found = counts_.find(GetCurrentThreadId());
    if (found != counts_.end() && --found->second.number == 0) {
      DestroyWindow(found->second.window);
      counts_.erase(found);
    }
  }
  ::CoUninitialize();
}

void Win32ComponentLibrary::GiveBackOn(LibraryThread thread) {
  const std::lock_guard lock(mutex_);
  const auto found = counts_.find(thread);
  if (found == counts_.end()) return;
  if (!Stands(found->second.window, thread)) {
    counts_.erase(found);
    return;
  }
  LoaderReference code = HoldThisCode();
  const auto carried = reinterpret_cast<LPARAM>(code.Get());
  if (PostMessageW(found->second.window, kGiveBack, 0, carried) != FALSE) (void)code.Detach();
}

HWND Win32ComponentLibrary::MakeWindow() {
  // A class of the system's: one of our own would have to be taken back before we are unloaded.
  const HWND window = CreateWindowExW(0, L"STATIC", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                      nullptr, nullptr);
  SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&OnMessage));
  return window;
}

LRESULT CALLBACK Win32ComponentLibrary::OnMessage(HWND window, UINT message, WPARAM wide,
                                                  LPARAM narrow) noexcept {
  if (message != kGiveBack) return DefWindowProcW(window, message, wide, narrow);
  const LoaderReference code(reinterpret_cast<HMODULE>(narrow));
  reinterpret_cast<Win32ComponentLibrary*>(GetWindowLongPtrW(window, GWLP_USERDATA))
      ->GiveBackHere();
  return 0;
}

}  // namespace pelora::windows
