// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <string>

namespace pelora::console {

/// Where an object lies, as it is read from the domain down: the object
/// `CN=Ada,OU=Sales,DC=example,DC=org` lies in "example.org/Sales". Escapes are taken out of names.
[[nodiscard]] QString FolderOf(const std::string& dn);

}  // namespace pelora::console
