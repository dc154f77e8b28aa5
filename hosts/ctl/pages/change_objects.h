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

/// What a command has to say to a run. Each may be none.
struct Checks {
  /// Why an object that has been read is not to be changed after all; empty when it is.
  std::function<std::string(std::size_t at, const ldap::Entry& entry)> why_not{};
  /// Called before the sums are told, when an object is not as it was asked to be.
  std::function<void()> when_not_all{};
};

/// Changes the settings of objects through their tabs, prints what becomes of each, and gives the
/// exit code.
[[nodiscard]] int ChangeObjects(const CommandLine& line, Program& program, Workplace& workplace,
                                std::span<const Target> targets,
                                const AssignmentsAt& assignments_at, const Checks& checks = {});

}  // namespace pelora::ctl
