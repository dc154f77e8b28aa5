// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "hosts/windows/system_headers.h"
#include "hosts/windows/win32_text_service.h"

namespace pelora::windows {
namespace {

TEST(Win32TextService, UpperCasesEveryScript) {
  const Win32TextService text;
  EXPECT_EQ(text.UpperCase(""), "");
  EXPECT_EQ(text.UpperCase("smtp:Ada@example.test 1"), "SMTP:ADA@EXAMPLE.TEST 1");
  EXPECT_EQ(text.UpperCase("größe çà"), "GRÖßE ÇÀ");
  EXPECT_EQ(text.UpperCase("ελένη щука"), "ΕΛΈΝΗ ЩУКА");
  EXPECT_EQ(text.UpperCase("林 \U0001F333"), "林 \U0001F333");
}

TEST(Win32TextService, DoesNotDependOnTheUsersLanguage) {
  const LCID before = GetThreadLocale();
  constexpr LCID kTurkish = 0x41F;
  SetThreadLocale(kTurkish);
  EXPECT_EQ(Win32TextService().UpperCase("mail"), "MAIL");
  SetThreadLocale(before);
}

}  // namespace
}  // namespace pelora::windows
