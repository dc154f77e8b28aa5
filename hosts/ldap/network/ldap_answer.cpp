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

std::string TextOf(const berval& value) { return {value.bv_val, value.bv_len}; }

AttributeValues ToValues(const berval* values) {
  AttributeValues copied;
  for (const berval* value = values; value != nullptr && value->bv_val != nullptr; ++value) {
    copied.push_back(TextOf(*value));
  }
  return copied;
}

StoreStatus Unreadable() {
  return {kLdapDecodingError, "the server sent something that cannot be read"};
}

std::string ReadPageMark(LDAP* handle, LDAPControl** controls) {
  LDAPControl* const control =
      controls == nullptr ? nullptr
                          : ldap_control_find(LDAP_CONTROL_PAGEDRESULTS, controls, nullptr);
  if (control == nullptr) return {};
  ber_int_t estimate = 0;
  berval mark{};
  if (ldap_parse_pageresponse_control(handle, control, &estimate, &mark) != LDAP_SUCCESS) return {};
  std::string text = TextOf(mark);
  ber_memfree(mark.bv_val);
  return text;
}

}  // namespace

StoreStatus OutcomeOf(LDAP* handle, LDAPMessage* result, std::string* page) {
  int code = LDAP_SUCCESS;
  char* server_text = nullptr;
  LDAPControl** raw_controls = nullptr;
  const int parsed =
      ldap_parse_result(handle, result, &code, nullptr, &server_text, nullptr, &raw_controls, 0);
  const LdapMemoryPtr<char> text(server_text);
  const LdapControlsPtr controls(raw_controls);
  if (parsed != LDAP_SUCCESS) return Unreadable();
  if (page != nullptr) *page = ReadPageMark(handle, controls.get());
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
  while (true) {
    berval attribute{};
    berval* list = nullptr;
    const int code = ldap_get_attribute_ber(handle, message, element, &attribute, &list);
    const ValuesPtr values(list);
    if (code != LDAP_SUCCESS) return Unreadable();
    if (attribute.bv_val == nullptr) return {};
    AttributeValues copied = ToValues(list);
    // Asked for a part of its values that is not there, an attribute comes without any.
    if (!copied.empty()) entry.attributes.emplace(TextOf(attribute), std::move(copied));
  }
}

StoreStatus EntriesOf(LDAP* handle, LDAPMessage* answer, std::vector<Entry>& entries) {
  entries.clear();
  for (LDAPMessage* message = ldap_first_entry(handle, answer); message != nullptr;
       message = ldap_next_entry(handle, message)) {
    Entry entry;
    StoreStatus status = EntryOf(handle, message, entry);
    if (!status.Ok()) return status;
    entries.push_back(std::move(entry));
  }
  return {};
}

}  // namespace pelora::ldap
