// SPDX-License-Identifier: Apache-2.0
// Takes any bytes for a mail address, a search query and a distinguished name, as a check of a
// directory does: nothing outside is read, and what is taken for an address or a query has its
// outer form at least.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "hosts/ldap/name_key.h"
#include "hosts/session/check/mail_address.h"
#include "hosts/session/check/search_query.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  if (pelora::session::IsMailAddress(text)) {
    const std::size_t at = text.rfind('@');
    if (at == 0 || at == std::string_view::npos || at + 1 == size || size > 254) std::abort();
  }
  if (pelora::session::IsSearchQuery(text)) {
    if (text.find('(') == std::string_view::npos || text.find('\0') != std::string_view::npos) {
      std::abort();
    }
  }
  (void)pelora::ldap::NameKey(text);
  return 0;
}
