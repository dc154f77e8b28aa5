// SPDX-License-Identifier: Apache-2.0
#include "hosts/windows/module/loader_reference.h"

namespace pelora::windows {
namespace {

/// In units of 100 nanoseconds, counted from now when negative.
constexpr LONGLONG kOneSecondFromNow = -10'000'000;

/// On a thread of the system's, which gives the reference back when this function has returned.
void CALLBACK GiveBack(PTP_CALLBACK_INSTANCE call, PVOID module, PTP_TIMER timer) {
  CloseThreadpoolTimer(timer);
  FreeLibraryWhenCallbackReturns(call, static_cast<HMODULE>(module));
}

}  // namespace

void LoaderReferenceTraits::Close(HMODULE module) {
  const PTP_TIMER timer = CreateThreadpoolTimer(&GiveBack, module, nullptr);
  if (timer == nullptr) return;
  const ULARGE_INTEGER due = {.QuadPart = static_cast<ULONGLONG>(kOneSecondFromNow)};
  FILETIME when = {.dwLowDateTime = due.LowPart, .dwHighDateTime = due.HighPart};
  SetThreadpoolTimer(timer, &when, 0, 0);
}

LoaderReference HoldThisCode() {
  HMODULE module = nullptr;
  const BOOL held = GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                                       reinterpret_cast<LPCWSTR>(&GiveBack), &module);
  return LoaderReference(held != FALSE ? module : nullptr);
}

}  // namespace pelora::windows
