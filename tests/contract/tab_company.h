// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "tests/contract/tab_console.h"
#include "tests/support/fake_directory.h"

namespace pelora::contract {

/// Path of a distinguished name.
[[nodiscard]] std::string TabPathOf(const std::string& name);

/// Adds the objects of the sample company to a directory in memory, with their names and the
/// attributes that tabs read.
void AddSampleCompany(pelora::testing::FakeDirectory& directory);

/// Gives an object of a directory in memory these values; attributes without any are taken away.
void GiveIn(pelora::testing::FakeDirectory& directory, const std::string& name,
            const TabValues& values);

/// What a directory in memory holds of the catalogue's attributes of an object, by its path or its
/// name.
[[nodiscard]] TabValues StoredAt(const pelora::testing::FakeDirectory& directory,
                                 const std::string& path);
[[nodiscard]] TabValues StoredIn(const pelora::testing::FakeDirectory& directory,
                                 const std::string& name);

}  // namespace pelora::contract
