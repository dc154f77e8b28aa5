// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace pelora::ldap {

/// The same text for every way to write one distinguished name: blanks around `,` and `=` do not
/// count, nor do case and the way in which characters are escaped. Not itself a name.
[[nodiscard]] std::string NameKey(std::string_view dn);

}  // namespace pelora::ldap
