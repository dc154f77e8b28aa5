// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <utility>

#include "hosts/ldap/schema.h"

namespace pelora::ldap {
namespace {

TEST(Schema, FindsAttributesWithoutCase) {
  Schema schema;
  schema.Add("peloraAccount", {.syntax = Syntax::kInteger, .is_single_valued = true});
  ASSERT_TRUE(schema.Find("PELORAACCOUNT"));
  EXPECT_EQ(schema.Find("peloraaccount")->syntax, Syntax::kInteger);
  EXPECT_TRUE(schema.Find("peloraaccount")->is_single_valued);
  EXPECT_EQ(schema.SpellingOf("peloraACCOUNT"), "peloraAccount");
}

TEST(Schema, KnowsNothingElse) {
  Schema schema;
  EXPECT_FALSE(schema.Find("mail"));
  schema.Add("mail", {});
  EXPECT_FALSE(schema.Find("mai"));
  EXPECT_FALSE(schema.Find("mail1"));
  EXPECT_FALSE(schema.Find(""));
  EXPECT_EQ(schema.SpellingOf("Other"), "Other");
}

TEST(Schema, TheLastDefinitionCounts) {
  Schema schema;
  schema.Add("mail", {.syntax = Syntax::kInteger});
  schema.Add("MAIL", {.syntax = Syntax::kOctets});
  EXPECT_EQ(schema.Find("mail")->syntax, Syntax::kOctets);
  EXPECT_EQ(schema.types().size(), 1U);
}

TEST(Schema, KnowsEverySyntaxOfActiveDirectory) {
  constexpr std::pair<const char*, Syntax> kRows[] = {{"2.5.5.1", Syntax::kDistinguishedName},
                                                      {"2.5.5.2", Syntax::kString},
                                                      {"2.5.5.3", Syntax::kString},
                                                      {"2.5.5.4", Syntax::kString},
                                                      {"2.5.5.5", Syntax::kString},
                                                      {"2.5.5.6", Syntax::kString},
                                                      {"2.5.5.7", Syntax::kStructuredName},
                                                      {"2.5.5.8", Syntax::kBoolean},
                                                      {"2.5.5.9", Syntax::kInteger},
                                                      {"2.5.5.10", Syntax::kOctets},
                                                      {"2.5.5.11", Syntax::kTime},
                                                      {"2.5.5.12", Syntax::kString},
                                                      {"2.5.5.13", Syntax::kString},
                                                      {"2.5.5.14", Syntax::kStructuredName},
                                                      {"2.5.5.15", Syntax::kSecurityDescriptor},
                                                      {"2.5.5.16", Syntax::kLargeInteger},
                                                      {"2.5.5.17", Syntax::kOctets}};
  for (const auto& [identifier, syntax] : kRows) {
    EXPECT_EQ(SyntaxOfIdentifier(identifier), syntax) << identifier;
  }
  for (const char* const unknown : {"", "2.5.5", "2.5.5.0", "2.5.5.18", "2.5.5.1 "}) {
    EXPECT_FALSE(SyntaxOfIdentifier(unknown)) << unknown;
  }
}

TEST(AttributeNameLess, OrdersWithoutCase) {
  const AttributeNameLess less;
  EXPECT_TRUE(less("Abc", "abd"));
  EXPECT_TRUE(less("ABD", "abde"));
  EXPECT_FALSE(less("ABC", "abc"));
  EXPECT_FALSE(less("abc", "ABC"));
}

}  // namespace
}  // namespace pelora::ldap
