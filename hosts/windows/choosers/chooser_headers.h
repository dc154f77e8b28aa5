// SPDX-License-Identifier: Apache-2.0
#pragma once

/// The system's headers of its directory choosers. Those of the query window only declare their
/// identifiers, and no import library defines them: they stand where they are used.

// clang-format off
#include "hosts/windows/system_headers.h"

#include <objsel.h>
#include <cmnquery.h>
#include <dsquery.h>
#include <dsclient.h>
// clang-format on
