// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/windows/values/unique_resource.h"
#include "platform/variant.h"

namespace pelora::windows {

/// Copies a value of the system's. An array of variants may have any lower bound; its elements keep
/// their order. Whatever nothing here reads is kept as its type code.
///
/// On failure (an array of variants with several dimensions, or one that cannot be read) `value` is
/// empty. `source` stays the caller's, as it was.
[[nodiscard]] HRESULT FromSystem(const VARIANT& source, Variant& value);

/// A new value of the system's, which owns its strings and arrays; arrays have lower bound 0.
/// `E_ADS_CANT_CONVERT_DATATYPE` for a value that is kept as its type code alone; `result` is empty
/// after any failure. `std::bad_alloc` when there is no memory.
[[nodiscard]] HRESULT ToSystem(const Variant& value, UniqueVariant& result);

}  // namespace pelora::windows
