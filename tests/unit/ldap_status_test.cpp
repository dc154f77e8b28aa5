// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/ldap_status.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <ostream>

namespace pelora::ldap {
namespace {

/// Result code of a server and of the system's LDAP library, the same in libldap's numbering, and
/// what the system makes of it.
struct StatusRow {
  int code;
  int libldap_code;
  std::uint32_t status;
};

void PrintTo(const StatusRow& row, std::ostream* out) { *out << "result code " << row.code; }

class LdapStatusTest : public testing::TestWithParam<StatusRow> {};

TEST_P(LdapStatusTest, HasItsSystemError) {
  const auto [code, libldap_code, status] = GetParam();
  EXPECT_EQ(HresultOfLdap(code), static_cast<HRESULT>(status));
  EXPECT_EQ(HresultOfLdap(libldap_code), static_cast<HRESULT>(status));
}

// clang-format off
constexpr StatusRow kRows[] = {
    {0, 0, 0x00000000},  {1, 1, 0x80072020},  {2, 2, 0x80072021},
    {3, 3, 0x80072022},  {4, 4, 0x80072023},  {5, 5, 0x80072025},
    {6, 6, 0x80072026},  {7, 7, 0x80072027},  {8, 8, 0x80072028},
    {9, 9, 0x800700EA},  {10, 10, 0x8007202B},  {11, 11, 0x80072024},
    {12, 12, 0x8007202C},  {13, 13, 0x8007202D},  {16, 16, 0x8007200A},
    {17, 17, 0x8007200C},  {18, 18, 0x8007202E},  {19, 19, 0x8007202F},
    {20, 20, 0x8007200D},  {21, 21, 0x8007200B},  {32, 32, 0x80072030},
    {33, 33, 0x80072031},  {34, 34, 0x80072032},  {35, 35, 0x80072033},
    {36, 36, 0x80072034},  {48, 48, 0x80072029},  {49, 49, 0x8007052E},
    {50, 50, 0x80070005},  {51, 51, 0x8007200E},  {52, 52, 0x8007200F},
    {53, 53, 0x80072035},  {54, 54, 0x80072036},  {64, 64, 0x80072037},
    {65, 65, 0x80072014},  {66, 66, 0x80072015},  {67, 67, 0x80072016},
    {68, 68, 0x80071392},  {69, 69, 0x80072017},  {70, 70, 0x80072038},
    {71, 71, 0x80072039},  {80, 80, 0x8007001F},  {81, -1, 0x8007203A},
    {82, -2, 0x8007203B},  {83, -3, 0x8007203C},  {84, -4, 0x8007203D},
    {85, -5, 0x800705B4},  {86, -6, 0x8007202A},  {87, -7, 0x8007203E},
    {88, -8, 0x800704C7},  {89, -9, 0x8007203F},  {90, -10, 0x80070008},
    {91, -11, 0x800704C9},  {92, -12, 0x80072040},  {93, -13, 0x80072042},
    {94, -14, 0x80072041},  {95, -15, 0x800700EA},  {96, -16, 0x80072043},
    {97, -17, 0x80072044},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(EveryCode, LdapStatusTest, testing::ValuesIn(kRows));

TEST(LdapStatusTable, HoldsNothingElse) { EXPECT_EQ(kLdapStatusTable.size(), std::size(kRows)); }

TEST(LdapStatusTable, HasNoCodeTwice) {
  for (const LdapStatus& row : kLdapStatusTable) {
    int found = 0;
    for (const LdapStatus& other : kLdapStatusTable) {
      if (other.code == row.code || other.libldap_code == row.libldap_code) ++found;
    }
    EXPECT_EQ(found, 1) << row.name;
  }
}

TEST(LdapStatusTable, ACodeWithoutASystemErrorIsAFailureAllTheSame) {
  for (const int code : {14, 15, 22, 60, 61, 76, 98, 118, 4096, -18, -1000}) {
    EXPECT_EQ(HresultOfLdap(code), static_cast<HRESULT>(0x8007203BU)) << code;
  }
}

TEST(LdapStatusTable, AgreesWithThePortsOwnNames) {
  EXPECT_EQ(HresultOfLdap(kLdapNoSuchObject), kNoSuchObject);
  EXPECT_EQ(HresultOfLdap(kLdapAlreadyExists), kObjectAlreadyExists);
}

}  // namespace
}  // namespace pelora::ldap
