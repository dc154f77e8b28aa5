// SPDX-License-Identifier: Apache-2.0
#pragma once

/// The system's headers, in the order in which they can be read: several of them use names of
/// earlier ones without including them.

// clang-format off
#include "platform/hresult.h"

#include <objbase.h>
#include <ole2.h>
#include <oleauto.h>
#include <prsht.h>
#include <commctrl.h>
#include <shlobj.h>
#include <iads.h>
#include <adshlp.h>
// clang-format on
