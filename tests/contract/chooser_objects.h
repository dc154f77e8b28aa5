// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tests/contract/choosers_contract.h"
#include "tests/support/fake_directory.h"

namespace pelora::contract {

inline constexpr const char* kChooserServerPath = "LDAP://dc1/";

/// Paths of objects by which they can be bound: a slash of an object's own is escaped.
[[nodiscard]] inline std::vector<std::string> ChooserPathsOf(const ChooserHost::Choice& objects) {
  std::vector<std::string> paths;
  for (const ChooserObject& object : objects) {
    std::string& path = paths.emplace_back(kChooserServerPath);
    for (const char letter : std::string_view(object.name)) {
      if (letter == '/') path += '\\';
      path += letter;
    }
  }
  return paths;
}

/// Paths of containers, which are not bound: behind the server stands the name itself.
[[nodiscard]] inline std::vector<std::string> ContainerPathsOf(
    const ChooserHost::Choice& containers) {
  std::vector<std::string> paths;
  for (const ChooserObject& container : containers) {
    paths.push_back(std::string(kChooserServerPath) + container.name);
  }
  return paths;
}

/// Adds the objects of the contract to a directory in memory.
inline void AddChooserObjects(pelora::testing::FakeDirectory& directory) {
  for (const ChooserObject& object : {kBirgit, kAnna, kRolf, kServer, kSales, kLaboratory}) {
    directory.AddObject(ChooserPathsOf({object}).front(),
                        {{"distinguishedName", Variant::String(object.name)},
                         {"cn", Variant::String(object.common_name)}});
  }
}

}  // namespace pelora::contract
