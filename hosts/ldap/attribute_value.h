// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/schema.h"
#include "platform/hresult.h"
#include "platform/variant.h"

namespace pelora::ldap {

/// The number that a whole text of decimal digits, with or without a minus sign, stands for;
/// nothing when it is no such text or does not fit.
[[nodiscard]] std::optional<std::int32_t> ParseInteger(std::string_view text);
[[nodiscard]] std::optional<std::int64_t> ParseLargeInteger(std::string_view text);

/// An attribute's values as a bound object gives them: one value gives its bare type, several an
/// array of variants, whatever the schema says; none gives an empty variant. Strings and names
/// become `VT_BSTR`, integers `VT_I4`; of the other syntaxes only the type code is given.
///
/// An integer that does not fit in 32 bits is `E_ADS_CANT_CONVERT_DATATYPE`; `value` is empty then.
[[nodiscard]] HRESULT DecodeValues(Syntax syntax, const AttributeValues& values, Variant& value);

/// The bytes that stand for a value, or for each element of an array, in the directory. A string of
/// digits is taken for an integer, and an integer for a string; "TRUE", "FALSE" and integers are
/// taken for a Boolean.
///
/// Anything else is `E_ADS_CANT_CONVERT_DATATYPE`; `values` is empty then.
[[nodiscard]] HRESULT EncodeValues(Syntax syntax, const Variant& value, AttributeValues& values);

}  // namespace pelora::ldap
