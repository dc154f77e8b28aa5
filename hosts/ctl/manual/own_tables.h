// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "hosts/resources/resource_file.h"

namespace pelora::ctl {

/// Paragraphs of the manual page about the program's own tables: "fields" (name, kind, label and
/// classes of each), "rules" (of the check), "classes" (words). Empty for another name.
[[nodiscard]] std::string ManualTable(const std::string& name,
                                      const resources::ResourceFile& module);

}  // namespace pelora::ctl
