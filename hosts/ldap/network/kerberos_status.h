// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

namespace pelora::ldap {

/// What the Kerberos library has to say of a failure, in its own words: the mechanism's when it has
/// some (`minor`), or else what the interface itself objects to.
[[nodiscard]] std::string TextOfKerberosStatus(std::uint32_t major, std::uint32_t minor);

}  // namespace pelora::ldap
