// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "hosts/windows/system_headers.h"
#include "hosts/windows/win32_text_service.h"
#include "tests/contract/text_service_contract.h"

namespace pelora::windows {
namespace {

TEST(Win32TextService, DoesNotDependOnTheUsersLanguage) {
  const LCID before = GetThreadLocale();
  constexpr LCID kTurkish = 0x41F;
  SetThreadLocale(kTurkish);
  EXPECT_EQ(Win32TextService().UpperCase("mail"), "MAIL");
  SetThreadLocale(before);
}

}  // namespace
}  // namespace pelora::windows

namespace pelora::contract {
namespace {

std::unique_ptr<ITextService> MakeTextService() {
  return std::make_unique<windows::Win32TextService>();
}

INSTANTIATE_TEST_SUITE_P(Win32, TextServiceContract, ::testing::Values(&MakeTextService));

}  // namespace
}  // namespace pelora::contract
