// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/attribute_rows.h"

#include <gtest/gtest.h>

namespace pelora::session {
namespace {

ldap::Schema MakeSchema() {
  ldap::Schema schema;
  schema.Add("objectGUID", {.syntax = ldap::Syntax::kOctets, .is_single_valued = true});
  schema.Add("objectSid", {.syntax = ldap::Syntax::kOctets, .is_single_valued = true});
  schema.Add("logonHours", {.syntax = ldap::Syntax::kOctets, .is_single_valued = true});
  schema.Add("description", {});
  return schema;
}

std::string Rows(const std::string& attribute, const ldap::AttributeValues& values) {
  const ldap::Entry entry{.dn = "CN=a", .attributes = {{attribute, values}}};
  return TextOf(AttributeRowsOf(MakeSchema(), entry));
}

TEST(AttributeRows, TextsStandAsTheyAreARowForEachValue) {
  EXPECT_EQ(Rows("description", {"Größe", "b"}), "description\tGröße\ndescription\tb\n");
  EXPECT_EQ(Rows("unknown", {"x"}), "unknown\tx\n");
  EXPECT_EQ(Rows("description", {"two\nlines"}), "description\ttwo lines\n");
}

TEST(AttributeRows, NumbersOfObjectsHaveTheirUsualForm) {
  const std::string guid("\x33\x22\x11\x00\x55\x44\x77\x66\x88\x99\xAA\xBB\xCC\xDD\xEE\xFF", 16);
  EXPECT_EQ(Rows("objectguid", {guid}), "objectguid\t00112233-4455-6677-8899-aabbccddeeff\n");
  const std::string sid("\x01\x02\x00\x00\x00\x00\x00\x05\x15\x00\x00\x00\x00\x00\x00\x80", 16);
  EXPECT_EQ(Rows("objectSid", {sid}), "objectSid\tS-1-5-21-2147483648\n");
  const std::string known("\x01\x01\x00\x00\x00\x00\x00\x05\x01\x02\x03\x04", 12);
  EXPECT_EQ(Rows("objectSid", {known}), "objectSid\tS-1-5-67305985\n") << "0x04030201";
}

TEST(AttributeRows, OtherBytesAreHexadecimal) {
  EXPECT_EQ(Rows("logonHours", {"\x01\xFF"}), "logonHours\t01ff\n");
  EXPECT_EQ(Rows("objectSid", {"short"}), "objectSid\t73686f7274\n");
  EXPECT_EQ(Rows("objectGUID", {"short"}), "objectGUID\t73686f7274\n");
  EXPECT_EQ(Rows("description", {"\xFF"}), "description\tff\n") << "no text";
  EXPECT_EQ(Rows("logonHours", {std::string(100, '\0')}),
            "logonHours\t" + std::string(128, '0') + "... (100 bytes)\n");
}

}  // namespace
}  // namespace pelora::session
