// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/ldap_answer.h"

#include <lber.h>

#include <memory>
#include <utility>

#include "hosts/ldap/ldap_status.h"

namespace pelora::ldap {
namespace {

/// Walks an entry's attributes; the bytes stay in the message.
struct BerFree {
  void operator()(BerElement* element) const { ber_free(element, 0); }
};
using BerPtr = std::unique_ptr<BerElement, BerFree>;

struct ValuesFree {
  void operator()(berval* values) const { ber_memfree(values); }
};
using ValuesPtr = std::unique_ptr<berval, ValuesFree>;

struct AddressesFree {
  void operator()(char** addresses) const { ber_memvfree(reinterpret_cast<void**>(addresses)); }
};

std::string TextOf(const berval& value) { return {value.bv_val, value.bv_len}; }

AttributeValues ToValues(const berval* values) {
  AttributeValues copied;
  for (const berval* value = values; value != nullptr && value->bv_val != nullptr; ++value) {
    copied.push_back(TextOf(*value));
  }
  return copied;
}

/// Names are handed to libraries that end them at a zero: they would take it for another name.
bool IsNameText(const std::string& text) { return text.find('\0') == std::string::npos; }

/// False when there is a mark that cannot be read: a list would end there as if that were all.
bool ReadPageMark(LDAP* handle, LDAPControl** controls, std::string& text) {
  text.clear();
  LDAPControl* const control =
      controls == nullptr ? nullptr
                          : ldap_control_find(LDAP_CONTROL_PAGEDRESULTS, controls, nullptr);
  if (control == nullptr) return true;
  // The library ends the program over one that has no value.
  if (control->ldctl_value.bv_val == nullptr || control->ldctl_value.bv_len == 0) return false;
  ber_int_t estimate = 0;
  berval mark{};
  if (ldap_parse_pageresponse_control(handle, control, &estimate, &mark) != LDAP_SUCCESS) {
    return false;
  }
  text = TextOf(mark);
  ber_memfree(mark.bv_val);
  return true;
}

}  // namespace

StoreStatus Unreadable() {
  return {kLdapDecodingError, "the server sent something that cannot be read"};
}

StoreStatus OutcomeOf(LDAP* handle, LDAPMessage* result, int type, std::string* page,
                      std::vector<std::string>* referral) {
  if (ldap_msgtype(result) != type) return Unreadable();
  int code = LDAP_SUCCESS;
  char* server_text = nullptr;
  char** raw_addresses = nullptr;
  LDAPControl** raw_controls = nullptr;
  const int parsed = ldap_parse_result(handle, result, &code, nullptr, &server_text, &raw_addresses,
                                       &raw_controls, 0);
  const LdapMemoryPtr<char> text(server_text);
  const std::unique_ptr<char*, AddressesFree> addresses(raw_addresses);
  const LdapControlsPtr controls(raw_controls);
  if (parsed != LDAP_SUCCESS || code < 0) return Unreadable();
  if (referral != nullptr) {
    referral->clear();
    for (char** at = raw_addresses; at != nullptr && *at != nullptr; ++at) {
      if (code == kLdapReferral) referral->emplace_back(*at);
    }
  }
  if (page != nullptr && !ReadPageMark(handle, controls.get(), *page)) return Unreadable();
  if (code == LDAP_SUCCESS) return {};
  const bool has_text = text != nullptr && *text != '\0';
  return {code, has_text ? text.get() : ldap_err2string(code)};
}

StoreStatus EntryOf(LDAP* handle, LDAPMessage* message, Entry& entry) {
  entry = {};
  BerElement* element = nullptr;
  berval name{};
  if (ldap_get_dn_ber(handle, message, &element, &name) != LDAP_SUCCESS) return Unreadable();
  const BerPtr owner(element);
  entry.dn = TextOf(name);
  if (!IsNameText(entry.dn)) return Unreadable();
  while (true) {
    berval attribute{};
    berval* list = nullptr;
    const int code = ldap_get_attribute_ber(handle, message, element, &attribute, &list);
    const ValuesPtr values(list);
    if (code != LDAP_SUCCESS) return Unreadable();
    if (attribute.bv_val == nullptr) return {};
    std::string attribute_name = TextOf(attribute);
    if (!IsNameText(attribute_name)) return Unreadable();
    AttributeValues copied = ToValues(list);
    // Asked for a part of its values that is not there, an attribute comes without any.
    if (!copied.empty()) entry.attributes.emplace(std::move(attribute_name), std::move(copied));
  }
}

std::size_t SizeOf(const Entry& entry) {
  std::size_t size = entry.dn.size();
  for (const auto& [name, values] : entry.attributes) {
    size += name.size();
    // The smallest value takes up room too.
    for (const std::string& value : values) size += sizeof value + value.size();
  }
  return size;
}

}  // namespace pelora::ldap
