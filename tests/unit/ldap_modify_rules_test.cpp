// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/modify_rules.h"

namespace pelora::ldap {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using Operation = Modification::Operation;

class ModifyRulesTest : public ::testing::Test {
 protected:
  ModifyRulesTest() {
    schema_.Add("cn", {.is_single_valued = true});
    schema_.Add("name", {.is_single_valued = true});
    schema_.Add("distinguishedName", {.syntax = Syntax::kDistinguishedName});
    schema_.Add("objectClass", {});
    schema_.Add("text", {.is_single_valued = true, .range_lower = 2, .range_upper = 5});
    schema_.Add("texts", {});
    schema_.Add("number", {.syntax = Syntax::kInteger, .is_single_valued = true});
    schema_.Add("small", {.syntax = Syntax::kInteger, .range_lower = -1, .range_upper = 9});
    schema_.Add("large", {.syntax = Syntax::kLargeInteger});
    schema_.Add("flag", {.syntax = Syntax::kBoolean});
    schema_.Add("names", {.syntax = Syntax::kDistinguishedName});
    schema_.Add("time", {.syntax = Syntax::kTime});
    schema_.Add("bytes", {.syntax = Syntax::kOctets, .range_upper = 3});
    entry_.dn = "CN=Ada,DC=x";
  }

  StoreStatus Apply(const std::vector<Modification>& modifications) {
    changed_ = {{"left over", {}}};
    return rules_.Apply(entry_, modifications, changed_);
  }
  int ApplyStrictly(const std::vector<Modification>& modifications) {
    changed_ = {{"left over", {}}};
    return rules_.Apply(entry_, modifications, changed_, ModifyWay::kStrict).code;
  }
  int Replace(const std::string& attribute, const AttributeValues& values) {
    return Apply({{Operation::kReplace, attribute, values}}).code;
  }

  Schema schema_;
  Entry entry_;
  AttributeMap changed_;
  ModifyRules rules_{schema_, [](const std::string& name) { return name.starts_with("CN="); }};
};

TEST_F(ModifyRulesTest, ReplacesAddsAndDeletes) {
  entry_.attributes = {{"texts", {"a", "b"}}, {"number", {"1"}}};
  ASSERT_TRUE(Apply({{Operation::kReplace, "number", {"2"}},
                     {Operation::kAdd, "texts", {"c"}},
                     {Operation::kDelete, "texts", {"a"}},
                     {Operation::kReplace, "text", {"new"}}})
                  .Ok());
  EXPECT_EQ(changed_, (AttributeMap{{"number", {"2"}}, {"texts", {"b", "c"}}, {"text", {"new"}}}));
}

TEST_F(ModifyRulesTest, AReplacementWithoutValuesRemoves) {
  entry_.attributes = {{"texts", {"a", "b"}}};
  ASSERT_EQ(Replace("texts", {}), 0);
  EXPECT_EQ(changed_, (AttributeMap{{"texts", {}}}));
  ASSERT_EQ(Replace("number", {}), 0);
  EXPECT_THAT(changed_, IsEmpty());
}

TEST_F(ModifyRulesTest, ADeleteWithoutValuesRemoves) {
  entry_.attributes = {{"texts", {"a", "b"}}};
  ASSERT_TRUE(Apply({{Operation::kDelete, "texts", {}}}).Ok());
  EXPECT_EQ(changed_, (AttributeMap{{"texts", {}}}));
}

TEST_F(ModifyRulesTest, WhatIsThereIsNotAddedAndWhatIsNotThereIsDeletedWithoutComplaint) {
  entry_.attributes = {{"texts", {"Äpfel"}}, {"small", {"7"}}, {"names", {"CN=a"}}};
  ASSERT_TRUE(Apply({{Operation::kAdd, "texts", {"äPFEL", "Birnen", "birnen"}},
                     {Operation::kAdd, "small", {"007"}},
                     {Operation::kAdd, "names", {"CN=A"}},
                     {Operation::kDelete, "bytes", {"x"}},
                     {Operation::kDelete, "flag", {}}})
                  .Ok());
  EXPECT_EQ(changed_, (AttributeMap{{"texts", {"Äpfel", "Birnen"}}}));
}

TEST_F(ModifyRulesTest, ValuesAreDeletedAsTheirSyntaxComparesThem) {
  entry_.attributes = {{"texts", {"ÄPFEL", "b"}}, {"small", {"7", "8"}}, {"bytes", {"a", "A"}}};
  ASSERT_TRUE(Apply({{Operation::kDelete, "texts", {"äpfel"}},
                     {Operation::kDelete, "small", {"07"}},
                     {Operation::kDelete, "bytes", {"a"}}})
                  .Ok());
  EXPECT_EQ(changed_, (AttributeMap{{"texts", {"b"}}, {"small", {"8"}}, {"bytes", {"A"}}}));
}

TEST_F(ModifyRulesTest, WhatStaysTheSameIsNotWritten) {
  entry_.attributes = {{"texts", {"a", "b"}}, {"number", {"1"}}};
  ASSERT_TRUE(Apply({{Operation::kReplace, "texts", {"a", "b"}},
                     {Operation::kReplace, "number", {"2"}},
                     {Operation::kReplace, "number", {"1"}}})
                  .Ok());
  EXPECT_THAT(changed_, IsEmpty());
  // Another case is another value to look at, though the same to compare.
  ASSERT_EQ(Replace("texts", {"A", "b"}), 0);
  EXPECT_EQ(changed_, (AttributeMap{{"texts", {"A", "b"}}}));
}

TEST_F(ModifyRulesTest, NamesGetTheSpellingOfTheSchema) {
  ASSERT_EQ(Replace("TEXTS", {"a"}), 0);
  ASSERT_EQ(changed_.size(), 1U);
  EXPECT_EQ(changed_.begin()->first, "texts");
}

TEST_F(ModifyRulesTest, AnUnknownAttributeIsRefused) {
  EXPECT_EQ(Replace("unknown", {"a"}), kLdapNoSuchAttribute);
  EXPECT_EQ(Replace("", {"a"}), kLdapNoSuchAttribute);
  EXPECT_THAT(changed_, IsEmpty());
}

TEST_F(ModifyRulesTest, OneValueIsEnoughForASingleValuedAttribute) {
  EXPECT_EQ(Replace("number", {"1", "2"}), kLdapConstraintViolation);
  entry_.attributes = {{"number", {"1"}}};
  EXPECT_EQ(Apply({{Operation::kAdd, "number", {"2"}}}).code, kLdapConstraintViolation);
  EXPECT_EQ(Apply({{Operation::kAdd, "number", {"1"}}}).code, 0);
}

TEST_F(ModifyRulesTest, AValueIsNotGivenTwice) {
  EXPECT_EQ(Replace("texts", {"a", "b", "a"}), kLdapValueExists);
  EXPECT_EQ(Replace("texts", {"ä", "Ä"}), kLdapValueExists);
  EXPECT_EQ(Replace("small", {"1", "01"}), kLdapValueExists);
  EXPECT_EQ(Replace("names", {"CN=a", "CN=A"}), kLdapValueExists);
  EXPECT_EQ(Replace("bytes", {"a", "A"}), 0);
}

TEST_F(ModifyRulesTest, AnEmptyValueIsRefused) {
  for (const char* const name : {"texts", "number", "flag", "names", "bytes", "time", "large"}) {
    EXPECT_EQ(Replace(name, {""}), kLdapInvalidSyntax) << name;
  }
}

TEST_F(ModifyRulesTest, AValueFitsItsSyntax) {
  struct Row {
    const char* attribute;
    const char* value;
    int code;
  };
  const Row rows[] = {
      {"number", "2147483647", 0},
      {"number", "-2147483648", 0},
      {"number", "2147483648", kLdapInvalidSyntax},
      {"number", "4294967301", kLdapInvalidSyntax},
      {"number", "12x", kLdapInvalidSyntax},
      {"large", "9223372036854775807", 0},
      {"large", "9223372036854775808", kLdapInvalidSyntax},
      {"flag", "TRUE", 0},
      {"flag", "FALSE", 0},
      {"flag", "true", kLdapInvalidSyntax},
      {"flag", "maybe", kLdapInvalidSyntax},
      {"time", "20240101000000.0Z", 0},
      {"time", "240101000000Z", 0},
      {"time", "2024", kLdapInvalidSyntax},
      {"time", "20240101000000.0", kLdapInvalidSyntax},
      {"time", "20240101T00000Z", kLdapInvalidSyntax},
      {"names", "CN=someone", 0},
      {"names", "someone", kLdapInvalidDnSyntax},
      {"texts", "Größe \xF0\x9F\x8C\xB3", 0},
      {"texts", "half \xC3", kLdapInvalidSyntax},
      {"bytes", "\xFF\x01", 0},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Replace(row.attribute, {row.value}), row.code) << row.attribute << ": " << row.value;
    EXPECT_EQ(Apply({{Operation::kAdd, row.attribute, {row.value}}}).code, row.code);
    EXPECT_EQ(Apply({{Operation::kDelete, row.attribute, {row.value}}}).code, 0);
  }
}

TEST_F(ModifyRulesTest, AValueKeepsToItsBounds) {
  EXPECT_EQ(Replace("small", {"-1"}), 0);
  EXPECT_EQ(Replace("small", {"9"}), 0);
  EXPECT_EQ(Replace("small", {"-2"}), kLdapConstraintViolation);
  EXPECT_EQ(Replace("small", {"10"}), kLdapConstraintViolation);
  // A text's length is counted in characters, not in bytes.
  EXPECT_EQ(Replace("text", {"äöüßé"}), 0);
  EXPECT_EQ(Replace("text", {"äöüßéx"}), kLdapConstraintViolation);
  EXPECT_EQ(Replace("text", {"x"}), kLdapConstraintViolation);
  EXPECT_EQ(Replace("bytes", {"abc"}), 0);
  EXPECT_EQ(Replace("bytes", {"abcd"}), kLdapConstraintViolation);
}

TEST_F(ModifyRulesTest, WhatNamesTheObjectCannotBeChanged) {
  EXPECT_EQ(Replace("cn", {"Other"}), kLdapNotAllowedOnRdn);
  EXPECT_EQ(Replace("CN", {"Other"}), kLdapNotAllowedOnRdn);
  EXPECT_EQ(Replace("name", {"Other"}), kLdapNotAllowedOnRdn);
  EXPECT_EQ(Replace("distinguishedName", {"CN=Other"}), kLdapConstraintViolation);
  EXPECT_EQ(Replace("objectClass", {"user"}), kLdapObjectClassViolation);
  entry_.dn = "OU=Sales,DC=x";
  EXPECT_EQ(Replace("cn", {"Other"}), 0);
}

TEST_F(ModifyRulesTest, OneRefusalRefusesAll) {
  const StoreStatus status = Apply({{Operation::kReplace, "texts", {"a"}},
                                    {Operation::kReplace, "number", {"x"}},
                                    {Operation::kReplace, "flag", {"TRUE"}}});
  EXPECT_EQ(status.code, kLdapInvalidSyntax);
  EXPECT_THAT(status.text, HasSubstr("'number'"));
  EXPECT_THAT(changed_, IsEmpty());
}

TEST_F(ModifyRulesTest, ValuesAreCheckedWithoutTheObject) {
  const auto check = [&](Operation operation, const char* attribute,
                         const AttributeValues& values) {
    const std::vector<Modification> changes = {{Operation::kReplace, "texts", {"fine"}},
                                               {operation, attribute, values}};
    return rules_.CheckValues(changes).code;
  };
  using enum Modification::Operation;
  EXPECT_EQ(check(kReplace, "number", {"-2147483648"}), 0);
  EXPECT_EQ(check(kReplace, "number", {"2147483648"}), kLdapInvalidSyntax);
  EXPECT_EQ(check(kAdd, "number", {"4294967301"}), kLdapInvalidSyntax);
  EXPECT_EQ(check(kReplace, "text", {}), 0);
  EXPECT_EQ(check(kReplace, "text", {""}), kLdapInvalidSyntax);
  EXPECT_EQ(check(kReplace, "text", {"longer"}), kLdapConstraintViolation);
  EXPECT_EQ(check(kReplace, "text", {"one", "two"}), kLdapConstraintViolation);
  EXPECT_EQ(check(kReplace, "texts", {"A", "a"}), kLdapValueExists);
  EXPECT_EQ(check(kReplace, "names", {"Ada"}), kLdapInvalidDnSyntax);
  EXPECT_EQ(check(kReplace, "unknown", {}), kLdapNoSuchAttribute);
  // What the object holds already is not known: adding may be right, and deleting always is.
  EXPECT_EQ(check(kAdd, "text", {"one"}), 0);
  EXPECT_EQ(check(kAdd, "texts", {"A", "a"}), 0);
  EXPECT_EQ(check(kDelete, "number", {"no number"}), 0);
  EXPECT_EQ(rules_.CheckValues({}).code, 0);
  const std::vector<Modification> change = {{kReplace, "small", {"10"}}};
  EXPECT_THAT(rules_.CheckValues(change).text, HasSubstr("attribute 'small': "));
}

TEST_F(ModifyRulesTest, NewEntriesKeepToTheSameRules) {
  Entry entry{.dn = "CN=New,DC=x",
              .attributes = {{"cn", {"New"}}, {"objectClass", {"user"}}, {"texts", {"a", "b"}}}};
  EXPECT_TRUE(rules_.CheckNew(entry).Ok());
  entry.attributes["number"] = {"1", "2"};
  EXPECT_EQ(rules_.CheckNew(entry).code, kLdapConstraintViolation);
  entry.attributes["number"] = {"x"};
  EXPECT_EQ(rules_.CheckNew(entry).code, kLdapInvalidSyntax);
  entry.attributes["number"] = {"1"};
  entry.attributes["unknown"] = {"x"};
  const StoreStatus status = rules_.CheckNew(entry);
  EXPECT_EQ(status.code, kLdapNoSuchAttribute);
  EXPECT_THAT(status.text, HasSubstr("'unknown'"));
}

TEST_F(ModifyRulesTest, StrictlyWhatIsDeletedHasToBeThere) {
  entry_.attributes = {
      {"texts", {"a", "b"}}, {"text", {"Anna"}}, {"number", {"7"}}, {"names", {"CN=Ä"}}};
  EXPECT_EQ(ApplyStrictly({{Operation::kDelete, "texts", {"a", "c"}}}), kLdapNoSuchAttribute);
  EXPECT_THAT(changed_, IsEmpty());
  EXPECT_EQ(ApplyStrictly({{Operation::kDelete, "texts", {"A"}}}), kLdapNoSuchAttribute);
  EXPECT_EQ(ApplyStrictly({{Operation::kDelete, "text", {"anna"}}}), kLdapNoSuchAttribute);
  EXPECT_EQ(ApplyStrictly({{Operation::kDelete, "bytes", {"x"}}}), kLdapNoSuchAttribute);
  EXPECT_EQ(ApplyStrictly({{Operation::kDelete, "bytes", {}}}), kLdapNoSuchAttribute);
  EXPECT_EQ(ApplyStrictly({{Operation::kDelete, "texts", {"a"}},
                           {Operation::kDelete, "number", {"07"}},
                           {Operation::kDelete, "names", {"cn=ä"}}}),
            0);
  EXPECT_EQ(changed_, (AttributeMap{{"texts", {"b"}}, {"number", {}}, {"names", {}}}));
}

TEST_F(ModifyRulesTest, StrictlyWhatIsAddedMustNotBeThere) {
  entry_.attributes = {{"texts", {"a", "b"}}, {"number", {"7"}}};
  EXPECT_EQ(ApplyStrictly({{Operation::kAdd, "texts", {"c", "A"}}}), kLdapValueExists);
  EXPECT_EQ(ApplyStrictly({{Operation::kAdd, "texts", {"c", "C"}}}), kLdapValueExists);
  EXPECT_EQ(ApplyStrictly({{Operation::kAdd, "number", {"8"}}}), kLdapValueExists);
  EXPECT_EQ(ApplyStrictly({{Operation::kAdd, "text", {"ok", "no"}}}), kLdapConstraintViolation);
  EXPECT_EQ(ApplyStrictly({{Operation::kAdd, "texts", {"c"}}, {Operation::kAdd, "text", {"ok"}}}),
            0);
  EXPECT_EQ(changed_, (AttributeMap{{"texts", {"a", "b", "c"}}, {"text", {"ok"}}}));
}

TEST_F(ModifyRulesTest, StrictlyTooOneModificationFollowsTheOther) {
  entry_.attributes = {{"texts", {"a", "b"}}, {"number", {"7"}}};
  EXPECT_EQ(ApplyStrictly({{Operation::kDelete, "number", {"7"}},
                           {Operation::kAdd, "number", {"8"}},
                           {Operation::kDelete, "texts", {"a"}},
                           {Operation::kAdd, "texts", {"A"}}}),
            0);
  EXPECT_EQ(changed_, (AttributeMap{{"number", {"8"}}, {"texts", {"b", "A"}}}));
  // What is put back as it was is no change.
  EXPECT_EQ(
      ApplyStrictly({{Operation::kDelete, "number", {"7"}}, {Operation::kAdd, "number", {"7"}}}),
      0);
  EXPECT_THAT(changed_, IsEmpty());
}

}  // namespace
}  // namespace pelora::ldap
