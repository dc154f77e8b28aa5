// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/attribute_editing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace pelora::session {
namespace {

using ldap::AttributeValues;
using ldap::Syntax;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

ldap::Schema MakeSchema() {
  ldap::Schema schema;
  schema.Add("cn", {.is_single_valued = true});
  schema.Add("info", {.is_single_valued = true, .range_upper = 20});
  schema.Add("description", {});
  schema.Add("objectClass", {});
  schema.Add(
      "rank",
      {.syntax = Syntax::kInteger, .is_single_valued = true, .range_lower = 1, .range_upper = 9});
  schema.Add("numbers", {.syntax = Syntax::kLargeInteger});
  schema.Add("isTall", {.syntax = Syntax::kBoolean, .is_single_valued = true});
  schema.Add("manager", {.syntax = Syntax::kDistinguishedName, .is_single_valued = true});
  schema.Add("photo", {.syntax = Syntax::kOctets});
  schema.Add("whenMade", {.syntax = Syntax::kTime, .is_single_valued = true});
  return schema;
}

const ldap::Schema& TheSchema() {
  static const ldap::Schema kSchema = MakeSchema();
  return kSchema;
}

ldap::Entry EntryWith(const std::string& attribute, const AttributeValues& values) {
  return {.dn = "CN=Ada,DC=x", .attributes = {{attribute, values}}};
}

std::string WhyNot(const std::string& attribute, const AttributeValues& values = {},
                   const WritableAttributes& writable = {}) {
  return WhyNotEditable(TheSchema(), writable, EntryWith(attribute, values), attribute);
}

EditableAttribute Of(const std::string& attribute, const AttributeValues& values) {
  return Editable(TheSchema(), EntryWith(attribute, values), attribute);
}

TEST(AttributeEditing, TextsNumbersAndBooleansCanBeEdited) {
  EXPECT_EQ(WhyNot("description", {"a", "b"}), "");
  EXPECT_EQ(WhyNot("INFO", {"two\r\nlines"}), "");
  EXPECT_EQ(WhyNot("rank", {"3"}), "");
  EXPECT_EQ(WhyNot("numbers", {"1", "2"}), "");
  EXPECT_EQ(WhyNot("isTall"), "");
}

TEST(AttributeEditing, OfTheRestItIsSaidWhyNot) {
  EXPECT_THAT(WhyNot("photo", {"x"}), HasSubstr("bytes"));
  EXPECT_THAT(WhyNot("manager", {"CN=Bo,DC=x"}), HasSubstr("other objects"));
  EXPECT_THAT(WhyNot("whenMade", {"20310101000000.0Z"}), HasSubstr("point of time"));
  EXPECT_THAT(WhyNot("cn", {"Ada"}), HasSubstr("made, renamed or moved"));
  EXPECT_THAT(WhyNot("objectclass", {"user"}), HasSubstr("made, renamed or moved"));
  EXPECT_THAT(WhyNot("unheardOf", {"x"}), HasSubstr("schema"));
  EXPECT_THAT(WhyNot("info", {"\xFF"}), HasSubstr("bytes"));
  EXPECT_THAT(WhyNot("description", {"a\nb"}), HasSubstr("several lines"));
}

TEST(AttributeEditing, WhatTheDirectoryLetsNobodyWriteIsReadOnly) {
  const WritableAttributes writable{.allowed = {{"Description"}}};
  EXPECT_EQ(WhyNot("description", {"a"}, writable), "");
  EXPECT_THAT(WhyNot("rank", {"3"}, writable), HasSubstr("no right"));
  EXPECT_THAT(Settable(TheSchema(), writable, EntryWith("cn", {"Ada"})),
              ElementsAre("description"));
  EXPECT_THAT(Settable(TheSchema(), writable, EntryWith("description", {"a"})), IsEmpty());
  EXPECT_THAT(Settable(TheSchema(), {}, EntryWith("rank", {"3"})),
              ElementsAre("description", "info", "isTall", "numbers"));
}

TEST(AttributeEditing, EachValueOfAListHasItsLine) {
  const EditableAttribute list = Of("description", {"a", "b"});
  EXPECT_EQ(list.form, ValueForm::kLines);
  EXPECT_EQ(TextOf(list), "a\nb");
  EXPECT_THAT(ValuesOf(list, "a\n\n c \n"), ElementsAre("a", " c "));
  EXPECT_THAT(ValuesOf(list, "\n \n"), IsEmpty());
}

TEST(AttributeEditing, ASingleTextKeepsItsLines) {
  const EditableAttribute text = Of("info", {"two\nlines"});
  EXPECT_EQ(text.form, ValueForm::kText);
  EXPECT_THAT(ValuesOf(text, TextOf(text)), ElementsAre("two\nlines")) << "as it was";
  EXPECT_THAT(ValuesOf(text, "now\nthree\nlines"), ElementsAre("now\r\nthree\r\nlines"));
  EXPECT_THAT(ValuesOf(text, ""), IsEmpty());
  EXPECT_EQ(TextOf(Of("info", {"a\r\nb"})), "a\nb");
}

TEST(AttributeEditing, NumbersAndBooleansAreWhatTheyAre) {
  EXPECT_EQ(Of("rank", {"3"}).form, ValueForm::kNumber);
  EXPECT_THAT(ValuesOf(Of("rank", {"3"}), " 4 "), ElementsAre("4"));
  EXPECT_EQ(Of("numbers", {}).form, ValueForm::kLines);
  EXPECT_EQ(Of("isTall", {"TRUE"}).form, ValueForm::kBoolean);
  EXPECT_THAT(ValuesOf(Of("isTall", {"TRUE"}), ""), IsEmpty());
}

TEST(AttributeEditing, WhatTheSchemaDoesNotTakeIsSaidBefore) {
  const auto why = [](const std::string& attribute, const AttributeValues& values) {
    return WhyNotTaken(TheSchema(), attribute, values);
  };
  EXPECT_EQ(why("rank", {"9"}), "");
  EXPECT_EQ(why("rank", {}), "");
  EXPECT_THAT(why("rank", {"10"}), HasSubstr("above the upper bound"));
  EXPECT_THAT(why("rank", {"three"}), HasSubstr("syntax"));
  EXPECT_THAT(why("numbers", {"1", "01"}), HasSubstr("twice"));
  EXPECT_THAT(why("info", {std::string(21, 'x')}), HasSubstr("upper bound"));
  EXPECT_THAT(why("isTall", {"yes"}), HasSubstr("syntax"));
}

}  // namespace
}  // namespace pelora::session
