// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/ctl/fields/fields.h"
#include "hosts/session/json_text.h"

namespace pelora::ctl {

using session::Json;
using session::JsonLine;

/// What a field holds, in JSON; nothing is null.
[[nodiscard]] Json JsonOf(const FieldValue& value);

}  // namespace pelora::ctl
