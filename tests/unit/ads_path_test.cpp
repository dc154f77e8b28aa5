// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/ads_path.h"

#include <gtest/gtest.h>

#include <ostream>

namespace pelora::ldap {

void PrintTo(const AdsPath& path, std::ostream* out) {
  *out << "server '" << path.server << "', name '" << path.dn << "', root " << path.is_root;
}

namespace {

struct PathRow {
  const char* path;
  const char* server;
  const char* dn;
};

constexpr PathRow kNames[] = {
    {"LDAP://CN=Ada,DC=x", "", "CN=Ada,DC=x"},
    {"LDAP://dc1.x.test/CN=Ada,DC=x", "dc1.x.test", "CN=Ada,DC=x"},
    {"LDAP://dc1.x.test:636/CN=Ada,DC=x", "dc1.x.test:636", "CN=Ada,DC=x"},
    {"LDAP://[2001:db8::1]:389/DC=x", "[2001:db8::1]:389", "DC=x"},
    {"LDAP://CN=Brandt\\, Ada,DC=x", "", "CN=Brandt\\, Ada,DC=x"},
    {"LDAP://CN=Lab A\\/B,DC=x", "", "CN=Lab A/B,DC=x"},
    {"LDAP://srv/CN=a\\/b\\, c\\/,OU=\\/,DC=x", "srv", "CN=a/b\\, c/,OU=/,DC=x"},
    {"LDAP://CN=back\\\\slash,DC=x", "", "CN=back\\\\slash,DC=x"},
    {"LDAP://CN=hex\\2Fslash\\0A,DC=x", "", "CN=hex\\2Fslash\\0A,DC=x"},
    {"LDAP://CN=Jörg,DC=x", "", "CN=Jörg,DC=x"},
    {"LDAP://CN=a=b,DC=x", "", "CN=a=b,DC=x"},
};

TEST(AdsPath, IsTakenApart) {
  for (const PathRow& row : kNames) {
    AdsPath parsed;
    ASSERT_EQ(ParseAdsPath(row.path, parsed), S_OK) << row.path;
    EXPECT_EQ(parsed, (AdsPath{.server = row.server, .dn = row.dn, .is_root = false}));
  }
}

TEST(AdsPath, IsPutTogether) {
  for (const PathRow& row : kNames) EXPECT_EQ(AdsPathOf(row.dn, row.server), row.path);
}

TEST(AdsPath, ASlashThatTheNameEscapesStaysEscapedOnce) {
  EXPECT_EQ(AdsPathOf("CN=a\\/b,DC=x"), "LDAP://CN=a\\/b,DC=x");
  EXPECT_EQ(AdsPathOf("CN=a\\\\/b,DC=x"), "LDAP://CN=a\\\\\\/b,DC=x");
  AdsPath parsed;
  ASSERT_EQ(ParseAdsPath("LDAP://CN=a\\\\\\/b,DC=x", parsed), S_OK);
  EXPECT_EQ(parsed.dn, "CN=a\\\\/b,DC=x");
  EXPECT_EQ(AdsPathOf("CN=a\\"), "LDAP://CN=a\\");
}

TEST(AdsPath, NamesTheRoot) {
  for (const char* const path : {"LDAP://rootDSE", "LDAP://RootDSE", "LDAP://ROOTDSE"}) {
    AdsPath parsed;
    ASSERT_EQ(ParseAdsPath(path, parsed), S_OK) << path;
    EXPECT_EQ(parsed, (AdsPath{.server = "", .dn = "", .is_root = true}));
  }
  AdsPath parsed;
  ASSERT_EQ(ParseAdsPath("LDAP://dc1:389/rootDSE", parsed), S_OK);
  EXPECT_EQ(parsed, (AdsPath{.server = "dc1:389", .dn = "", .is_root = true}));
}

TEST(AdsPath, AnythingElseIsRefused) {
  for (const char* const path : {
           "",
           "LDAP:",
           "LDAP:/",
           "LDAP://",
           "LDAP:///",
           "LDAP:///CN=Ada,DC=x",
           "ldap://CN=Ada,DC=x",
           "WinNT://CN=Ada,DC=x",
           "CN=Ada,DC=x",
           " LDAP://CN=Ada,DC=x",
           "LDAP://server",
           "LDAP://server/",
           "LDAP://server/other/CN=Ada,DC=x",
           "LDAP://server/rootDSE/",
           "LDAP://CN=a/b,DC=x",
           "LDAP://CN=a\\\\/b,DC=x",
           "LDAP://server/CN=a/b,DC=x",
           "LDAP://CN=Ada,,DC=x",
           "LDAP://CN=Ada,",
           "LDAP://,CN=Ada",
           "LDAP://CN=,DC=x",
           "LDAP://=Ada,DC=x",
           "LDAP://CN=Ada,x",
           "LDAP://<GUID=00>/x",
       }) {
    AdsPath parsed{.server = "before", .dn = "before", .is_root = true};
    EXPECT_EQ(ParseAdsPath(path, parsed), E_ADS_BAD_PATHNAME) << path;
    EXPECT_EQ(parsed, AdsPath()) << path;
  }
}

}  // namespace
}  // namespace pelora::ldap
