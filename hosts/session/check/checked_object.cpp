// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/check/checked_object.h"

#include <memory>
#include <utility>

#include "hosts/ldap/attribute_value.h"
#include "hosts/ldap/entry_values.h"
#include "hosts/ldap/store_object.h"

namespace pelora::session {

const ldap::AttributeValues& CheckedObject::Values(std::string_view attribute) const {
  return ldap::ValuesOf(entry_, attribute);
}

std::string CheckedObject::Text(std::string_view attribute) const {
  return ldap::FirstValue(entry_, attribute);
}

std::int64_t CheckedObject::Number(std::string_view attribute) const {
  return ldap::ParseLargeInteger(Text(attribute)).value_or(0);
}

std::string CheckedObject::ChoiceOf(std::string_view attribute,
                                    ldap::AttributeMap attributes) const {
  const FieldRow* const field = fields_.FindChoice(class_name_, attribute);
  if (field == nullptr) return {};
  const Ref<IADs> object = Ref<IADs>::Adopt(new ldap::StoreObject(
      store_, {.dn = entry_.dn, .is_root = false, .classes = Values("objectClass")},
      std::make_shared<ldap::StoreStatus>(), std::move(attributes)));
  const std::optional<std::size_t> choice = field->choice_of(*object);
  return choice && *choice < field->choices.size() ? std::string(field->choices[*choice])
                                                   : std::string();
}

std::string CheckedObject::ChoiceOf(std::string_view attribute) const {
  return ChoiceOf(attribute, entry_.attributes);
}

bool CheckedObject::CanTakeOut(std::string_view attribute) const {
  const FieldRow* const field = fields_.Find(class_name_, attribute);
  return field != nullptr && !field->is_read_only && field->remove != 0;
}

}  // namespace pelora::session
