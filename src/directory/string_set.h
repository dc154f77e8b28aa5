// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <set>
#include <string>
#include <string_view>

#include "platform/ads.h"

namespace pelora {

/// An ordered set of strings without duplicates, by byte comparison.
using StringSet = std::set<std::string>;

/// Reads every value of an attribute. An absent attribute is the empty set and `S_OK`; any other
/// failure leaves `values` as it was. An array element that is not a string is
/// `E_ADS_CANT_CONVERT_DATATYPE`, so that what could not be read is never written back without it.
[[nodiscard]] HRESULT ReadStringSet(IADs& object, std::string_view attribute, StringSet& values);

/// Stages the set as the attribute's full new value: a removal for the empty set, a single string
/// for one value, an array in ascending order for more. The caller commits.
[[nodiscard]] HRESULT WriteStringSet(IADs& object, std::string_view attribute,
                                     const StringSet& values);

/// Whether the attribute holds `value`; `contains` is set only when it could be read.
[[nodiscard]] HRESULT StringSetContains(IADs& object, std::string_view attribute,
                                        const std::string& value, bool& contains);

}  // namespace pelora
