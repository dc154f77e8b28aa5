// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/object_name.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "hosts/ldap/ldb_connection.h"
#include "hosts/ldap/name_key.h"

namespace pelora::ldap {
namespace {

TEST(ObjectName, ValuesAreWrittenAsNamesHaveThem) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"Ada", "Ada"},
      {"Krämer, Birgit", "Krämer\\, Birgit"},
      {"a+b\"c\\d<e>f;g=h", "a\\+b\\\"c\\\\d\\<e\\>f\\;g\\=h"},
      {"#1", "\\#1"},
      {"No #1", "No #1"},
      {" both ", "\\ both\\ "},
      {"in the middle", "in the middle"},
      {" ", "\\ "},
      {"I/O", "I/O"},
      {"tab\there\x7F", "tab\\09here\\7F"},
      {std::string("nul\0!", 5), "nul\\00!"},
      {"林田 美咲", "林田 美咲"},
      {"", ""},
  };
  for (const auto& [value, written] : rows) EXPECT_EQ(EscapeNameValue(value), written) << value;
}

TEST(NameKey, ControlCharactersOfANameDivideNothing) {
  EXPECT_NE(NameKey("CN=a\\01ou\\02b,DC=x"), NameKey("CN=a,OU=b,DC=x"));
  EXPECT_NE(NameKey("CN=a\x01ou\x02"
                    "b,DC=x"),
            NameKey("CN=a,OU=b,DC=x"));
  EXPECT_NE(NameKey("CN=a\\03\\01"), NameKey("CN=a\\01"));
  // What follows them is no beginning, where blanks do not count.
  EXPECT_EQ(NameKey("CN=a\\01 b"), NameKey("cn=a\\01\\20b"));
  EXPECT_NE(NameKey("CN=a\\01 b"), NameKey("CN=a\\01b"));
  EXPECT_EQ(NameKey("CN=a\\01 , DC=x"), NameKey("cn=A\\01,dc=X"));
}

TEST(ObjectName, WhatIsWrittenReadsBackAsTheSameName) {
  std::unique_ptr<LdbConnection> connection;
  ASSERT_TRUE(LdbConnection::OpenUnconnected(connection).Ok());
  for (const std::string value :
       {"Ada", "Krämer, Birgit", "a+b\"c\\d<e>f;g=h", "#1", " both ", "I/O", "tab\there"}) {
    const std::string name = ChildName("DC=x", "user", value);
    ASSERT_TRUE(connection->IsName(name)) << name;
    EXPECT_EQ(connection->NamingAttributeOf(name).value, value);
    EXPECT_EQ(connection->ParentName(name), "DC=x");
  }
}

TEST(ObjectName, OrganizationalUnitsAreNamedByTheirOwnAttribute) {
  EXPECT_EQ(ChildName("DC=x", "organizationalUnit", "Sales"), "OU=Sales,DC=x");
  EXPECT_EQ(ChildName("DC=x", "ORGANIZATIONALUNIT", "Sales"), "OU=Sales,DC=x");
  for (const char* object_class :
       {"user", "contact", "group", "computer", "peloraAddresslist", "peloraDynamicDistlist"}) {
    EXPECT_EQ(ChildName("OU=S,DC=x", object_class, "A, B"), "CN=A\\, B,OU=S,DC=x");
  }
}

}  // namespace
}  // namespace pelora::ldap
