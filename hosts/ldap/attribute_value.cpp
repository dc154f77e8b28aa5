// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/attribute_value.h"

#include <charconv>
#include <span>
#include <utility>
#include <vector>

namespace pelora::ldap {
namespace {

template <class Number>
std::optional<Number> ParseWhole(std::string_view text) {
  Number number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end) return std::nullopt;
  return number;
}

std::optional<Variant> Decode(Syntax syntax, const std::string& bytes) {
  switch (syntax) {
    case Syntax::kString:
    case Syntax::kDistinguishedName:
      return Variant::String(bytes);
    case Syntax::kInteger: {
      const std::optional<std::int32_t> number = ParseInteger(bytes);
      if (!number) return std::nullopt;
      return Variant::Integer(*number);
    }
    case Syntax::kBoolean:
      return Variant::OtherType(VT_BOOL);
    case Syntax::kOctets:
      return Variant::OtherType(VT_ARRAY | VT_UI1);
    case Syntax::kTime:
      return Variant::OtherType(VT_DATE);
    case Syntax::kLargeInteger:
    case Syntax::kSecurityDescriptor:
    case Syntax::kStructuredName:
      return Variant::OtherType(VT_DISPATCH);
  }
  return std::nullopt;
}

std::optional<std::string> EncodeBoolean(const Variant& value) {
  if (value.type() == VT_I4) return value.integer() != 0 ? "TRUE" : "FALSE";
  if (value.type() != VT_BSTR) return std::nullopt;
  if (value.string() != "TRUE" && value.string() != "FALSE") return std::nullopt;
  return value.string();
}

std::optional<std::string> Encode(Syntax syntax, const Variant& value) {
  switch (syntax) {
    case Syntax::kString:
      if (value.type() == VT_I4) return std::to_string(value.integer());
      [[fallthrough]];
    case Syntax::kDistinguishedName:
      if (value.type() != VT_BSTR) return std::nullopt;
      return value.string();
    case Syntax::kInteger: {
      if (value.type() == VT_I4) return std::to_string(value.integer());
      if (value.type() != VT_BSTR) return std::nullopt;
      const std::optional<std::int32_t> number = ParseInteger(value.string());
      if (!number) return std::nullopt;
      return std::to_string(*number);
    }
    case Syntax::kBoolean:
      return EncodeBoolean(value);
    case Syntax::kLargeInteger:
    case Syntax::kOctets:
    case Syntax::kTime:
    case Syntax::kSecurityDescriptor:
    case Syntax::kStructuredName:
      return std::nullopt;
  }
  return std::nullopt;
}

}  // namespace

std::optional<std::int32_t> ParseInteger(std::string_view text) {
  return ParseWhole<std::int32_t>(text);
}

std::optional<std::int64_t> ParseLargeInteger(std::string_view text) {
  return ParseWhole<std::int64_t>(text);
}

HRESULT DecodeValues(Syntax syntax, const AttributeValues& values, Variant& value) {
  value = {};
  std::vector<Variant> decoded;
  decoded.reserve(values.size());
  for (const std::string& bytes : values) {
    std::optional<Variant> one = Decode(syntax, bytes);
    if (!one) return E_ADS_CANT_CONVERT_DATATYPE;
    decoded.push_back(*std::move(one));
  }
  if (decoded.size() == 1) {
    value = std::move(decoded.front());
  } else if (!decoded.empty()) {
    value = Variant::Array(std::move(decoded));
  }
  return S_OK;
}

HRESULT EncodeValues(Syntax syntax, const Variant& value, AttributeValues& values) {
  values.clear();
  const bool is_array = value.type() == kVariantArray;
  const auto elements = is_array ? std::span<const Variant>(value.array()) : std::span(&value, 1);
  AttributeValues encoded;
  for (const Variant& element : elements) {
    std::optional<std::string> bytes = Encode(syntax, element);
    if (!bytes) return E_ADS_CANT_CONVERT_DATATYPE;
    encoded.push_back(*std::move(bytes));
  }
  values = std::move(encoded);
  return S_OK;
}

}  // namespace pelora::ldap
