// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace pelora::ldap {

/// What is asked for of an object that is bound, its classes besides: what the extension's tabs
/// show and write. Nothing else comes along: an object may hold photos, confidential values and
/// passwords, which are nobody's business here.
[[nodiscard]] std::vector<std::string> BoundAttributes();

/// Whether an attribute is among them, however it is spelled.
[[nodiscard]] bool IsBoundAttribute(std::string_view name);

}  // namespace pelora::ldap
