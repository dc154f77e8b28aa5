// SPDX-License-Identifier: Apache-2.0
#pragma once

/// The system's interfaces of new-object wizards, with the identifiers that their header defines
/// for no library.

// clang-format off
#include "hosts/windows/system_headers.h"

#include <dsadmin.h>
// clang-format on

#ifdef __CRT_UUID_DECL
__CRT_UUID_DECL(IDsAdminNewObj, 0xF2573587, 0xE6FC, 0x11D2, 0x82, 0xAF, 0x00, 0xC0, 0x4F, 0x68,
                0x92, 0x8B)
__CRT_UUID_DECL(IDsAdminNewObjPrimarySite, 0xBE2B487E, 0xF904, 0x11D2, 0x82, 0xB9, 0x00, 0xC0, 0x4F,
                0x68, 0x92, 0x8B)
__CRT_UUID_DECL(IDsAdminNewObjExt, 0x6088EAE2, 0xE7BF, 0x11D2, 0x82, 0xAF, 0x00, 0xC0, 0x4F, 0x68,
                0x92, 0x8B)
#endif
