// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace pelora::ldap {

/// The same text for every way to write one distinguished name: blanks around `,` and `=` do not
/// count, nor do case and the way in which characters are escaped. Not itself a name.
[[nodiscard]] std::string NameKey(std::string_view dn);

/// Whether the object of a name's key lies somewhere below that of another.
[[nodiscard]] bool LiesBelow(std::string_view key, std::string_view above);

}  // namespace pelora::ldap
