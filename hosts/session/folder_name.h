// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace pelora::session {

/// Where an object lies, as it is read from the domain down: the object
/// `CN=Ada,OU=Sales,DC=example,DC=org` lies in "example.org/Sales". Escapes are taken out of names.
[[nodiscard]] std::string FolderOf(const std::string& dn);

/// What an object is called where it lies: the object `CN=Ada,OU=Sales,DC=example,DC=org` is "Ada".
/// Escapes are taken out; a text that is no distinguished name is answered as it is.
[[nodiscard]] std::string OwnNameOf(const std::string& dn);

/// Where the objects right below a container lie: in `OU=Sales,DC=example,DC=org` they lie in
/// "example.org/Sales". For a domain it is its name in the domain name system.
[[nodiscard]] std::string AsFolder(const std::string& container);

}  // namespace pelora::session
