// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "hosts/ldap/attribute_value.h"
#include "tests/support/variant_text.h"

namespace pelora::ldap {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

Variant Decoded(Syntax syntax, const AttributeValues& values) {
  Variant value;
  EXPECT_EQ(DecodeValues(syntax, values, value), S_OK);
  return value;
}

TEST(DecodeValues, GivesTheTypeOfTheSyntax) {
  EXPECT_EQ(Decoded(Syntax::kString, {"Größe"}), Variant::String("Größe"));
  EXPECT_EQ(Decoded(Syntax::kDistinguishedName, {"CN=a/b,DC=x"}), Variant::String("CN=a/b,DC=x"));
  EXPECT_EQ(Decoded(Syntax::kInteger, {"-5"}), Variant::Integer(-5));
  EXPECT_EQ(Decoded(Syntax::kBoolean, {"TRUE"}), Variant::OtherType(VT_BOOL));
  EXPECT_EQ(Decoded(Syntax::kOctets, {std::string("\0\x01", 2)}),
            Variant::OtherType(VT_ARRAY | VT_UI1));
  EXPECT_EQ(Decoded(Syntax::kTime, {"20240101000000.0Z"}), Variant::OtherType(VT_DATE));
  for (const Syntax syntax :
       {Syntax::kLargeInteger, Syntax::kSecurityDescriptor, Syntax::kStructuredName}) {
    EXPECT_EQ(Decoded(syntax, {"1"}), Variant::OtherType(VT_DISPATCH));
  }
}

TEST(DecodeValues, TheNumberOfValuesDecidesOnTheShape) {
  EXPECT_EQ(Decoded(Syntax::kString, {}), Variant());
  EXPECT_EQ(Decoded(Syntax::kString, {"a", "b"}), Variant::StringArray({"a", "b"}));
  EXPECT_EQ(Decoded(Syntax::kInteger, {"1", "2", "3"}),
            Variant::Array({Variant::Integer(1), Variant::Integer(2), Variant::Integer(3)}));
  EXPECT_EQ(Decoded(Syntax::kBoolean, {"TRUE", "FALSE"}),
            Variant::Array({Variant::OtherType(VT_BOOL), Variant::OtherType(VT_BOOL)}));
}

TEST(DecodeValues, AnIntegerThatIsNoneCannotBeConverted) {
  for (const char* const stored :
       {"", "x", "1x", " 1", "1 ", "+1", "2147483648", "-2147483649", "0x10", "--1"}) {
    Variant value = Variant::Integer(1);
    EXPECT_EQ(DecodeValues(Syntax::kInteger, {stored}, value), E_ADS_CANT_CONVERT_DATATYPE)
        << stored;
    EXPECT_TRUE(value.IsEmpty());
  }
  Variant value;
  EXPECT_EQ(DecodeValues(Syntax::kInteger, {"1", "x"}, value), E_ADS_CANT_CONVERT_DATATYPE);
}

struct EncodingRow {
  Syntax syntax;
  Variant value;
  /// Nothing: the value does not fit.
  std::optional<std::string> stored;
};

TEST(EncodeValues, TurnsWhatFitsIntoTheSyntax) {
  const EncodingRow rows[] = {
      {Syntax::kString, Variant::String("Größe"), "Größe"},
      {Syntax::kString, Variant::String(""), ""},
      {Syntax::kString, Variant::Integer(-7), "-7"},
      {Syntax::kString, Variant(), std::nullopt},
      {Syntax::kString, Variant::OtherType(VT_BOOL), std::nullopt},
      {Syntax::kDistinguishedName, Variant::String("CN=a,DC=x"), "CN=a,DC=x"},
      {Syntax::kDistinguishedName, Variant::Integer(1), std::nullopt},
      {Syntax::kInteger, Variant::Integer(-2147483647 - 1), "-2147483648"},
      {Syntax::kInteger, Variant::String("007"), "7"},
      {Syntax::kInteger, Variant::String("-1"), "-1"},
      {Syntax::kInteger, Variant::String("2147483647"), "2147483647"},
      {Syntax::kInteger, Variant::String("2147483648"), std::nullopt},
      {Syntax::kInteger, Variant::String("-2147483649"), std::nullopt},
      {Syntax::kInteger, Variant::String(""), std::nullopt},
      {Syntax::kInteger, Variant::String("1.5"), std::nullopt},
      {Syntax::kInteger, Variant::OtherType(VT_BOOL), std::nullopt},
      {Syntax::kInteger, Variant(), std::nullopt},
      {Syntax::kBoolean, Variant::Integer(2), "TRUE"},
      {Syntax::kBoolean, Variant::Integer(0), "FALSE"},
      {Syntax::kBoolean, Variant::String("TRUE"), "TRUE"},
      {Syntax::kBoolean, Variant::String("FALSE"), "FALSE"},
      {Syntax::kBoolean, Variant::String("true"), std::nullopt},
      {Syntax::kBoolean, Variant::OtherType(VT_BOOL), std::nullopt},
      {Syntax::kLargeInteger, Variant::Integer(1), std::nullopt},
      {Syntax::kOctets, Variant::String("x"), std::nullopt},
      {Syntax::kTime, Variant::String("20240101000000.0Z"), std::nullopt},
      {Syntax::kSecurityDescriptor, Variant::String("x"), std::nullopt},
      {Syntax::kStructuredName, Variant::String("x"), std::nullopt},
      {Syntax::kString, Variant::Array({Variant::StringArray({"nested"})}), std::nullopt},
  };
  for (const EncodingRow& row : rows) {
    AttributeValues values = {"before"};
    const HRESULT status = EncodeValues(row.syntax, row.value, values);
    if (row.stored) {
      EXPECT_EQ(status, S_OK) << ToText(row.value);
      EXPECT_THAT(values, ElementsAre(*row.stored));
    } else {
      EXPECT_EQ(status, E_ADS_CANT_CONVERT_DATATYPE) << ToText(row.value);
      EXPECT_THAT(values, IsEmpty());
    }
  }
}

TEST(EncodeValues, TakesEveryElementOfAnArray) {
  AttributeValues values;
  ASSERT_EQ(EncodeValues(Syntax::kString, Variant::StringArray({"a", "b"}), values), S_OK);
  EXPECT_THAT(values, ElementsAre("a", "b"));
  ASSERT_EQ(EncodeValues(Syntax::kString, Variant::Array({}), values), S_OK);
  EXPECT_THAT(values, IsEmpty());
  const Variant mixed = Variant::Array({Variant::Integer(1), Variant()});
  EXPECT_EQ(EncodeValues(Syntax::kInteger, mixed, values), E_ADS_CANT_CONVERT_DATATYPE);
  EXPECT_THAT(values, IsEmpty());
}

TEST(ParseLargeInteger, HoldsSixtyFourBits) {
  EXPECT_EQ(ParseLargeInteger("9223372036854775807"), INT64_MAX);
  EXPECT_EQ(ParseLargeInteger("-9223372036854775808"), INT64_MIN);
  EXPECT_FALSE(ParseLargeInteger("9223372036854775808"));
  EXPECT_FALSE(ParseLargeInteger("12 "));
}

}  // namespace
}  // namespace pelora::ldap
