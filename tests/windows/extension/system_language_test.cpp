// SPDX-License-Identifier: Apache-2.0
// The module on systems of other languages. The runner starts these tests in several of them; on a
// system as the other tests have it they hold as well.
#include <gmock/gmock.h>

#include <array>
#include <cstdlib>

#include "hosts/windows/values/wide_text.h"
#include "tests/windows/extension/user_tab.h"
#include "tests/windows/support/page_layout.h"

namespace pelora::windows::test {
namespace {

using ::testing::Contains;
using ::testing::HasSubstr;

/// Letters of which no code page has all; the last one lies beyond the first plane.
constexpr const char* kManyScripts = "Ωμέγα Жук İıÇ 漢字カナ שלום Größe \U0001F4EC";

std::string AskedFor() {
  const char* const asked = std::getenv("PELORA_LANGUAGE");
  return asked == nullptr ? "en-US" : asked;
}

TEST(SystemLanguage, IsTheOneThatWasAskedFor) {
  std::array<wchar_t, LOCALE_NAME_MAX_LENGTH> name{};
  ASSERT_GT(GetSystemDefaultLocaleName(name.data(), static_cast<int>(name.size())), 0);
  EXPECT_EQ(ToNarrow(name.data()), AskedFor());
}

/// Whether the language is read from right to left: such a system turns sheets round.
bool IsRightToLeft() { return AskedFor() == "he-IL"; }

class SystemLanguageTest : public UserTab {};

TEST_F(SystemLanguageTest, TheCapitalsOfTheDefaultAddressAreNobodysLanguage) {
  OpenUser({{"mail", Variant::String("info.istanbul@firma.example")}});
  EXPECT_THAT(Rows(IDC_EMAIL_LIST), Contains("INFO.ISTANBUL@FIRMA.EXAMPLE"));
}

TEST_F(SystemLanguageTest, NamesOutsideTheCodePageAreShown) {
  const std::string delegate = std::string("CN=") + kManyScripts + ",DC=fake,DC=example";
  OpenUser({{"mail", Variant::String("a@x.test")},
            {"peloraSendAsPrivilege", Variant::StringArray({delegate, "CN=Bob,DC=x"})},
            {"peloraUserServer", Variant::String(kManyScripts)}});
  EXPECT_THAT(Rows(IDC_SENDAS_LIST), Contains(delegate));
  EXPECT_THAT(Controls(), Contains(HasSubstr(kManyScripts)));
}

TEST_F(SystemLanguageTest, WhatIsTypedOutsideTheCodePageIsWritten) {
  constexpr const char* kList = "LDAP://CN=List,DC=fake,DC=example";
  directory().AddObject(kList, {{"peloraAccount", Variant::Integer(1)}});
  Open("CPropPageAddresslist", {kList});
  const std::string query = std::string("(cn=") + kManyScripts + ")";
  Retype(IDC_SEARCH_QUERY, query);
  EXPECT_THAT(Apply(), Contains(HasSubstr(query)));
}

TEST_F(SystemLanguageTest, TheFirstSelectedObjectMayHaveAnyName) {
  const std::string path = std::string("LDAP://dc1/CN=") + kManyScripts + ",DC=fake,DC=example";
  directory().AddObject(
      path, {{"peloraAccount", Variant::Integer(1)}, {"mail", Variant::String("a@x.test")}});
  Open("CPropPageUser", {path});
  User().Click(IDC_PELORA_HIDDEN);
  EXPECT_THAT(Apply(), Contains("Put <1> peloraHidden 1"));
}

TEST_F(SystemLanguageTest, ThePageLiesAsTheSystemsWindowsDo) {
  OpenUser({{"mail", Variant::String("a@x.test")}});
  const bool is_turned = (GetWindowLongW(sheet().window(), GWL_EXSTYLE) & WS_EX_LAYOUTRTL) != 0;
  EXPECT_EQ(is_turned, IsRightToLeft());
  // What one reads first comes first, on the side from which one reads.
  RECT quota = {};
  RECT account = {};
  GetWindowRect(GetDlgItem(sheet().Page(), IDC_QUOTA_OVERRIDE), &quota);
  GetWindowRect(GetDlgItem(sheet().Page(), IDC_PELORA_ACCOUNT), &account);
  EXPECT_EQ(quota.left > account.left, IsRightToLeft());
  EXPECT_THAT(ClippedControls(sheet().Page()), ::testing::IsEmpty());
}

}  // namespace
}  // namespace pelora::windows::test
