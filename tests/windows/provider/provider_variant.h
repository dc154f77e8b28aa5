// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/windows/system_headers.h"
#include "platform/variant.h"

namespace pelora::windows::test {

/// Between the values of the directory in memory and those of the system, written apart from the
/// product's own conversion, so that a mistake there cannot undo itself here.
///
/// An array is made with the lower bound 7, as the system permits. A value that is kept as its type
/// code alone becomes some value of that type. The caller owns the result.
[[nodiscard]] VARIANT MakeSystemValue(const Variant& value);

/// `source` is only read. A value of a type that the directory cannot hold keeps its type code.
[[nodiscard]] Variant ReadSystemValue(const VARIANT& source);

}  // namespace pelora::windows::test
