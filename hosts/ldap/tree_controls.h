// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace pelora::ldap {

/// Extensions of requests, as servers name them. What lies below a deleted object goes too.
inline constexpr const char* kTreeDeleteControl = "1.2.840.113556.1.4.805";
/// Deleted objects are there for the request.
inline constexpr const char* kShowDeletedControl = "1.2.840.113556.1.4.417";

}  // namespace pelora::ldap
