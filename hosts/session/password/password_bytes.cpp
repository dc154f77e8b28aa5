// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/password/password_bytes.h"

#include <algorithm>

#include "directory/utf.h"
#include "hosts/ldap/wipe.h"

namespace pelora::session {

std::string PasswordBytes(std::string_view password) {
  constexpr std::size_t kBeyondTheObject = 64;
  std::u16string units = ToUtf16(password);
  std::string bytes;
  bytes.reserve(std::max(2 * (units.size() + 2), kBeyondTheObject));
  const auto add = [&bytes](char16_t unit) {
    bytes += static_cast<char>(unit & 0xFF);
    bytes += static_cast<char>(unit >> 8);
  };
  add(u'"');
  for (const char16_t unit : units) add(unit);
  add(u'"');
  ldap::Wipe(units);
  return bytes;
}

}  // namespace pelora::session
