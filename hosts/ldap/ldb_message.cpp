// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/ldb_message.h"

#include <algorithm>
#include <new>
#include <span>

#include "hosts/ldap/ldb_api.h"

namespace pelora::ldap {

std::string ToBytes(const ldb_val& value) {
  return {reinterpret_cast<const char*>(value.data), value.length};
}

namespace {

void Append(const ldb_message_element& element, AttributeValues& values) {
  values.reserve(values.size() + element.num_values);
  for (const ldb_val& value : std::span(element.values, element.num_values)) {
    values.push_back(ToBytes(value));
  }
}

}  // namespace

Entry ToEntry(const ldb_message& message) {
  Entry entry;
  entry.dn = ldb_dn_get_linearized(message.dn);
  for (const ldb_message_element& element : std::span(message.elements, message.num_elements)) {
    Append(element, entry.attributes[element.name]);
  }
  return entry;
}

Entry ToEntry(const ldb_message& message, std::span<const Modification> modifications) {
  Entry entry;
  entry.dn = ldb_dn_get_linearized(message.dn);
  for (const Modification& change : modifications) {
    const auto [values, is_new] = entry.attributes.try_emplace(change.attribute);
    if (!is_new) continue;
    const ldb_message_element* const element =
        ldb_msg_find_element(&message, change.attribute.c_str());
    if (element == nullptr) {
      entry.attributes.erase(values);
    } else {
      Append(*element, values->second);
    }
  }
  return entry;
}

ldb_message* MakeLdbMessage(void* scope, ldb_context* context, const std::string& dn) {
  ldb_message* const message = ldb_msg_new(scope);
  if (message == nullptr) throw std::bad_alloc();
  message->dn = ldb_dn_new(message, context, dn.c_str());
  return message->dn != nullptr && ldb_dn_validate(message->dn) ? message : nullptr;
}

void AddElement(ldb_message& message, int flags, const std::string& name,
                const AttributeValues& values) {
  ldb_message_element* element = nullptr;
  if (ldb_msg_add_empty(&message, name.c_str(), flags, &element) != LDB_SUCCESS) {
    throw std::bad_alloc();
  }
  for (const std::string& value : values) {
    // The library counts on a zero behind the bytes.
    auto* const bytes = static_cast<std::uint8_t*>(talloc_zero_size(&message, value.size() + 1));
    if (bytes == nullptr) throw std::bad_alloc();
    std::copy(value.begin(), value.end(), bytes);
    const ldb_val copy{.data = bytes, .length = value.size()};
    if (ldb_msg_element_add_value(&message, element, &copy) != LDB_SUCCESS) {
      throw std::bad_alloc();
    }
  }
}

}  // namespace pelora::ldap
