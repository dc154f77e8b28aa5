// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <cstdio>
#include <ctime>

// The library's own headers do not say that they are C.
extern "C" {
#include <ldb.h>
}
