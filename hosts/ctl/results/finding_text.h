// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "hosts/session/check/finding.h"

namespace pelora::ctl {

/// The line of a finding: `RULE<TAB>DN<TAB>MESSAGE`.
[[nodiscard]] std::string FindingLine(const session::Finding& finding);

/// The same as a JSON object: rule, dn, message, others.
[[nodiscard]] std::string FindingJson(const session::Finding& finding);

}  // namespace pelora::ctl
