// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/referral.h"

#include <string_view>

#include "directory/ascii_case.h"

namespace pelora::ldap {

std::optional<ServerName> ServerOfReferral(const std::vector<std::string>& addresses) {
  constexpr std::string_view kProtocol = "ldap://";
  for (const std::string_view address : addresses) {
    if (!EqualsWithoutCase(address.substr(0, kProtocol.size()), kProtocol)) continue;
    const std::string_view rest = address.substr(kProtocol.size());
    if (auto server = ParseServerName(rest.substr(0, rest.find_first_of("/?")))) return server;
  }
  return std::nullopt;
}

}  // namespace pelora::ldap
