// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/netlogon_message.h"

#include <lber.h>
#include <ldap.h>

#include <array>
#include <memory>
#include <new>

#include "directory/ascii_case.h"

namespace pelora::ldap {
namespace {

constexpr const char* kAttribute = "Netlogon";

/// Version 5, with the names of the domain name system; the lowest byte first.
constexpr std::array<char, 4> kVersion = {0x06, 0, 0, 0};

struct BerFree {
  void operator()(BerElement* element) const { ber_free(element, 1); }
};
using BerPtr = std::unique_ptr<BerElement, BerFree>;

struct ValueFree {
  void operator()(berval* value) const { ber_bvfree(value); }
};

}  // namespace

std::string NetlogonRequest(int id, const std::string& domain) {
  const BerPtr message(ber_alloc_t(LBER_USE_DER));
  if (!message) throw std::bad_alloc();
  // A search: its base, scope, aliases, limits of number and time, values too; then the filter and
  // the attribute.
  const bool is_written = ber_printf(message.get(), "{it{seeiib", id, ber_tag_t{LDAP_REQ_SEARCH},
                                     "", LDAP_SCOPE_BASE, LDAP_DEREF_NEVER, 0, 0, 0) != -1 &&
                          ber_printf(message.get(), "t{", ber_tag_t{LDAP_FILTER_AND}) != -1 &&
                          ber_printf(message.get(), "t{so}", ber_tag_t{LDAP_FILTER_EQUALITY},
                                     "DnsDomain", domain.data(), ber_len_t{domain.size()}) != -1 &&
                          ber_printf(message.get(), "t{so}", ber_tag_t{LDAP_FILTER_EQUALITY},
                                     "NtVer", kVersion.data(), ber_len_t{kVersion.size()}) != -1 &&
                          ber_printf(message.get(), "}{s}}}", kAttribute) != -1;
  berval* flat = nullptr;
  if (!is_written || ber_flatten(message.get(), &flat) != 0) throw std::bad_alloc();
  const std::unique_ptr<berval, ValueFree> owner(flat);
  return {flat->bv_val, flat->bv_len};
}

std::optional<NetlogonAnswer> ReadNetlogonMessage(int id, std::string_view datagram) {
  // The library looks at the first byte of what has none.
  if (datagram.empty()) return std::nullopt;
  berval bytes{.bv_len = datagram.size(), .bv_val = const_cast<char*>(datagram.data())};
  const BerPtr message(ber_init(&bytes));
  if (!message) return std::nullopt;
  ber_int_t answered = 0;
  ber_len_t size = 0;
  if (ber_scanf(message.get(), "{i", &answered) == LBER_ERROR || answered != id ||
      ber_peek_tag(message.get(), &size) != LDAP_RES_SEARCH_ENTRY) {
    return std::nullopt;
  }
  berval name{};
  berval attribute{};
  berval value{};
  // The values stay in the message.
  if (ber_scanf(message.get(), "{m{{m[m", &name, &attribute, &value) == LBER_ERROR ||
      !EqualsWithoutCase({attribute.bv_val, attribute.bv_len}, kAttribute)) {
    return std::nullopt;
  }
  return ReadNetlogonAnswer({value.bv_val, value.bv_len});
}

}  // namespace pelora::ldap
