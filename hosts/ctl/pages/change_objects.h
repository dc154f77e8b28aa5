// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <vector>

#include "hosts/ctl/pages/settings_changer.h"
#include "hosts/ctl/results/write_run.h"
#include "hosts/ctl/workplace.h"

namespace pelora::ctl {

/// What is asked of the object at a place among the targets. It is looked at once per object, in
/// order, and need not stay.
using AssignmentsAt = std::function<std::span<const Assignment>(std::size_t at)>;

/// Why an object that has been read is not to be changed after all; empty when it is.
using WhyNot = std::function<std::string(std::size_t at, const ldap::Entry& entry)>;

/// Changes the settings of objects through their tabs, prints what becomes of each, and gives the
/// exit code.
[[nodiscard]] int ChangeObjects(const CommandLine& line, Program& program, Workplace& workplace,
                                std::span<const Target> targets,
                                const AssignmentsAt& assignments_at, const WhyNot& why_not = {});

}  // namespace pelora::ctl
