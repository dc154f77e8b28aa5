// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

#include "platform/guid.h"

namespace pelora {

/// The module's application identifier. Fixed: installed systems know it.
inline constexpr Guid kApplicationId{
    0x8DBF4062, 0xE183, 0x43D3, {0x9A, 0x1E, 0x80, 0xBA, 0x4D, 0x10, 0x20, 0x2B}};

/// The library of `pelora_prop.idl`, "PeloraProp 1.0 Type Library". Fixed likewise.
inline constexpr Guid kTypeLibraryId{
    0x19841C29, 0x76C0, 0x45FD, {0xB0, 0x10, 0x4C, 0x8F, 0x7D, 0x54, 0xE3, 0x09}};
inline constexpr std::uint16_t kTypeLibraryMajorVersion = 1;
inline constexpr std::uint16_t kTypeLibraryMinorVersion = 0;

}  // namespace pelora
