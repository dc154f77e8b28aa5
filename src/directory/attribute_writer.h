// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string_view>

#include "directory/attribute_change.h"
#include "platform/ads.h"

namespace pelora {

/// The number at the start of a field's text, in decimal: leading blanks are passed over, a sign is
/// accepted, digits are read up to the first other character. Text without digits is 0. A number
/// beyond 32 bits is the largest 32-bit one, as the platform's own conversion has it; a minus sign
/// gives the complement. The result is the 32-bit pattern of the unsigned number.
[[nodiscard]] std::int32_t ParseUnsigned(std::string_view text);

/// Stages one change on `object`; see `CADSBase::WriteAttributes`. A change that cannot be written
/// as it is (a list without its array, an unknown type) gives `S_ADS_ERRORSOCCURRED`; whatever
/// success the directory answers is `S_OK`.
[[nodiscard]] HRESULT WriteAttribute(IADs& object, AttributeChange& change, bool clear_empty);

}  // namespace pelora
