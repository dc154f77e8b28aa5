// SPDX-License-Identifier: Apache-2.0
// The precompiled header belongs to a target, and a target needs a source.
#include "cmake/std_headers.h"
