// SPDX-License-Identifier: Apache-2.0
// Whether the module lets itself be loaded.
#include <gtest/gtest.h>

#include "hosts/windows/system_headers.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved);

namespace pelora::windows {
namespace {

TEST(DllMain, RefusesTheLoadWhenTheModuleCannotBeMade) {
  // No module lies there, so that it would have no path.
  const auto nowhere = reinterpret_cast<HINSTANCE>(std::uintptr_t{0x10000});
  EXPECT_EQ(DllMain(nowhere, DLL_PROCESS_ATTACH, nullptr), FALSE);
}

TEST(DllMain, AcceptsTheLoad) {
  EXPECT_EQ(DllMain(GetModuleHandleW(nullptr), DLL_PROCESS_ATTACH, nullptr), TRUE);
}

TEST(DllMain, AcceptsEveryOtherCall) {
  const auto nowhere = reinterpret_cast<HINSTANCE>(std::uintptr_t{0x10000});
  for (const DWORD reason : {DLL_PROCESS_DETACH, DLL_THREAD_ATTACH, DLL_THREAD_DETACH}) {
    EXPECT_EQ(DllMain(nowhere, reason, nullptr), TRUE) << reason;
  }
}

}  // namespace
}  // namespace pelora::windows
