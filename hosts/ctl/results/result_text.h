// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "hosts/changes/result.h"

namespace pelora::ctl {

/// The line of a result: `RESULT<TAB>DN` or `RESULT<TAB>DN<TAB>MESSAGE`.
[[nodiscard]] std::string ResultLine(const changes::Result& result);

/// The names of the objects that a report (results as JSON objects, one a line) says are done. A
/// last line that was cut short is passed over. Throws `WrongUsage` with the line of anything else;
/// `name` is what the report is called then.
[[nodiscard]] std::vector<std::string> DoneObjects(std::string_view report,
                                                   const std::string& name);

}  // namespace pelora::ctl
