// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "tests/support/fake_directory.h"

namespace pelora::contract {

/// Path of a distinguished name.
[[nodiscard]] std::string TabPathOf(const std::string& name);

/// Adds the objects of the sample company to a directory in memory, with their names and the
/// attributes that tabs read.
void AddSampleCompany(pelora::testing::FakeDirectory& directory);

/// Values of an attribute of a directory in memory, as text.
[[nodiscard]] std::vector<std::string> ValuesIn(const pelora::testing::FakeDirectory& directory,
                                                const std::string& name,
                                                std::string_view attribute);

}  // namespace pelora::contract
