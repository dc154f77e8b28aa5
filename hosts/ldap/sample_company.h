// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace pelora::ldap {

/// The directory of an invented company, schema and content, as LDIF for `CreateLdbDirectory`.
[[nodiscard]] std::string_view SampleCompanyLdif();

}  // namespace pelora::ldap
