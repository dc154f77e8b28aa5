// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "hosts/resources/resource_file.h"

namespace pelora::ctl {

/// A script that completes the program's arguments in bash, made of one that leaves out what stands
/// in the program's tables. A line of its own stands for it there:
///
///     @WORDS@             variables with the words of commands, classes, rules, columns and fields
///     @OPTION_VALUES@     what completes the value of each option, by the option's name
///     @COMMAND_OPTIONS@   the options of each command, by its name
///     @FIELD_VALUES@      the values of flags and choices, by the field's name
///
/// Throws `std::runtime_error` when one of them is missing.
[[nodiscard]] std::string BashCompletion(std::string_view script,
                                         const resources::ResourceFile& module);

}  // namespace pelora::ctl
