// SPDX-License-Identifier: Apache-2.0
// What a server publishes of its attributes.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "hosts/ldap/network/schema_cache.h"
#include "hosts/ldap/network/subschema.h"

namespace pelora::ldap {
namespace {

std::string Describe(const Schema& schema, const char* name) {
  const auto type = schema.Find(name);
  if (!type) return "unknown";
  std::string text = std::to_string(static_cast<int>(type->syntax));
  text += type->is_single_valued ? " single" : " multi";
  if (type->range_lower) text += " from " + std::to_string(*type->range_lower);
  if (type->range_upper) text += " to " + std::to_string(*type->range_upper);
  return text;
}

std::string DescribeAs(Syntax syntax, const std::string& rest) {
  return std::to_string(static_cast<int>(syntax)) + " " + rest;
}

std::string ReadOne(const std::string& type, const char* name = "x") {
  return Describe(ReadSubschema({type}, {}), name);
}

TEST(Subschema, ReadsTheFormOfDomainControllers) {
  const Schema schema = ReadSubschema(
      {"( 1.2.840.113556.1.4.221 NAME 'sAMAccountName' "
       "SYNTAX '1.3.6.1.4.1.1466.115.121.1.15' SINGLE-VALUE )",
       "( 2.5.4.31 NAME 'member' SYNTAX '1.3.6.1.4.1.1466.115.121.1.12' )",
       "( 1.2.840.113556.1.2.2 NAME 'whenCreated' SYNTAX '1.3.6.1.4.1.1466.115.121.1.24' "
       "SINGLE-VALUE NO-USER-MODIFICATION )"},
      {"( 1.2.840.113556.1.4.221 NAME 'sAMAccountName' RANGE-LOWER '0' RANGE-UPPER '256' "
       "PROPERTY-GUID 'D0BF0A3EE6D011D0AFDD00C04FD930C9' "
       "PROPERTY-SET-GUID '54018DE4F8BCD111870200C04FB96050' INDEXED )",
       "( 2.5.4.31 NAME 'member' PROPERTY-GUID 'C0BF0A3EE6D011D0AFDD00C04FD930C9' )",
       "( 1.1 NAME 'unheardOf' RANGE-UPPER '3' )"});
  EXPECT_EQ(Describe(schema, "samaccountname"),
            DescribeAs(Syntax::kString, "single from 0 to 256"));
  EXPECT_EQ(Describe(schema, "member"), DescribeAs(Syntax::kDistinguishedName, "multi"));
  EXPECT_EQ(Describe(schema, "whenCreated"), DescribeAs(Syntax::kTime, "single"));
  EXPECT_EQ(Describe(schema, "unheardOf"), "unknown");
  EXPECT_EQ(schema.SpellingOf("SAMACCOUNTNAME"), "sAMAccountName");
  EXPECT_EQ(schema.types().size(), 3U);
}

TEST(Subschema, ReadsOtherFormsToo) {
  const std::string integer = DescribeAs(Syntax::kInteger, "multi");
  EXPECT_EQ(ReadOne("( 1.1 NAME 'x' SYNTAX 1.3.6.1.4.1.1466.115.121.1.27 )"), integer);
  EXPECT_EQ(ReadOne("(1.1 NAME 'x' SYNTAX 1.3.6.1.4.1.1466.115.121.1.27{64})"), integer);
  EXPECT_EQ(ReadOne("( 1.1 NAME ( 'x' 'other' ) SYNTAX '1.3.6.1.4.1.1466.115.121.1.27' )"),
            integer);
  EXPECT_EQ(ReadOne("( 1.1 NAME ( 'x' 'other' ) SYNTAX '1.3.6.1.4.1.1466.115.121.1.27' )", "other"),
            integer);
  EXPECT_EQ(ReadOne("( 1.1 NAME x SYNTAX '1.3.6.1.4.1.1466.115.121.1.27' )"), integer);
  EXPECT_EQ(ReadOne("( 1.1 NAME 'x' DESC 'SINGLE-VALUE SYNTAX 1.1' "
                    "SYNTAX '1.3.6.1.4.1.1466.115.121.1.27' )"),
            integer);
}

TEST(Subschema, WhatIsNotUnderstoodIsLeftOut) {
  for (const char* const type :
       {"", "(", "( 1.1", "( 1.1 NAME", "( 1.1 NAME 'x' )", "( 1.1 NAME 'x' SYNTAX )",
        "( 1.1 NAME 'x' SYNTAX '1.2.3' )", "( 1.1 NAME '' SYNTAX '1.3.6.1.4.1.1466.115.121.1.27' )",
        "( 1.1 NAME ( 'x' SYNTAX '1.3.6.1.4.1.1466.115.121.1.27' )",
        "( 1.1 SYNTAX '1.3.6.1.4.1.1466.115.121.1.27' )", "( 1.1 NAME 'x", "'''", "\xFF\xFE"}) {
    EXPECT_EQ(ReadOne(type), "unknown") << type;
  }
  const Schema schema = ReadSubschema({"( 1.1 NAME 'x' SYNTAX '1.3.6.1.4.1.1466.115.121.1.27' )"},
                                      {"( 1.1 NAME 'x' RANGE-LOWER 'few' RANGE-UPPER )", "((", ""});
  EXPECT_EQ(Describe(schema, "x"), DescribeAs(Syntax::kInteger, "multi"));
}

TEST(Subschema, KnowsTheSyntaxesOfDomainControllers) {
  struct Row {
    const char* identifier;
    Syntax syntax;
  };
  constexpr Row kRows[] = {
      {"1.3.6.1.4.1.1466.115.121.1.7", Syntax::kBoolean},
      {"1.3.6.1.4.1.1466.115.121.1.12", Syntax::kDistinguishedName},
      {"1.3.6.1.4.1.1466.115.121.1.15", Syntax::kString},
      {"1.3.6.1.4.1.1466.115.121.1.24", Syntax::kTime},
      {"1.3.6.1.4.1.1466.115.121.1.26", Syntax::kString},
      {"1.3.6.1.4.1.1466.115.121.1.27", Syntax::kInteger},
      {"1.3.6.1.4.1.1466.115.121.1.36", Syntax::kString},
      {"1.3.6.1.4.1.1466.115.121.1.38", Syntax::kString},
      {"1.3.6.1.4.1.1466.115.121.1.40", Syntax::kOctets},
      {"1.3.6.1.4.1.1466.115.121.1.43", Syntax::kString},
      {"1.3.6.1.4.1.1466.115.121.1.44", Syntax::kString},
      {"1.3.6.1.4.1.1466.115.121.1.53", Syntax::kTime},
      {"1.2.840.113556.1.4.903", Syntax::kStructuredName},
      {"1.2.840.113556.1.4.904", Syntax::kStructuredName},
      {"1.2.840.113556.1.4.905", Syntax::kString},
      {"1.2.840.113556.1.4.906", Syntax::kLargeInteger},
      {"1.2.840.113556.1.4.907", Syntax::kSecurityDescriptor},
  };
  for (const Row& row : kRows) {
    EXPECT_EQ(SyntaxOfLdapIdentifier(row.identifier), row.syntax) << row.identifier;
  }
  EXPECT_FALSE(SyntaxOfLdapIdentifier("1.3.6.1.4.1.1466.115.121.1").has_value());
  EXPECT_FALSE(SyntaxOfLdapIdentifier("").has_value());
}

TEST(SchemaCache, GivesASchemaForItsServerAndState) {
  SchemaCache cache;
  const ServerName server{.host = "dc1"};
  const ServerName other{.host = "dc2"};
  const auto schema = std::make_shared<const Schema>();
  EXPECT_EQ(cache.Find(server, "1"), nullptr);
  cache.Keep(server, "1", schema);
  EXPECT_EQ(cache.Find(server, "1"), schema);
  EXPECT_EQ(cache.Find(other, "1"), nullptr);
  EXPECT_EQ(cache.Find(server, "2"), nullptr);

  const auto extended = std::make_shared<const Schema>();
  cache.Keep(server, "2", extended);
  EXPECT_EQ(cache.Find(server, "2"), extended);
  EXPECT_EQ(cache.Find(server, "1"), nullptr);
}

TEST(SchemaCache, KeepsNothingWithoutAState) {
  SchemaCache cache;
  cache.Keep({.host = "dc1"}, "", std::make_shared<const Schema>());
  EXPECT_EQ(cache.Find({.host = "dc1"}, ""), nullptr);
}

}  // namespace
}  // namespace pelora::ldap
