// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "hosts/ldap/directory_store.h"
#include "hosts/session/check/check_fields.h"

namespace pelora::session {

/// One object as a check rule sees it: what was read of it, and the fields that its tabs show.
///
/// Attributes that a rule did not ask for may be missing whatever the object holds.
class CheckedObject {
 public:
  /// Everything outlives it. `class_name` is the class that decides on the tabs.
  CheckedObject(ldap::IDirectoryStore& store, const ldap::Entry& entry, std::string_view class_name,
                const CheckFields& fields)
      : store_(store), entry_(entry), class_name_(class_name), fields_(fields) {}
  CheckedObject(const CheckedObject&) = delete;
  CheckedObject& operator=(const CheckedObject&) = delete;

  [[nodiscard]] const std::string& dn() const { return entry_.dn; }
  [[nodiscard]] std::string_view class_name() const { return class_name_; }
  [[nodiscard]] const CheckFields& fields() const { return fields_; }

  [[nodiscard]] const ldap::AttributeValues& Values(std::string_view attribute) const;
  /// The first value; empty when there is none.
  [[nodiscard]] std::string Text(std::string_view attribute) const;
  /// The first value as a number: 0 when there is none, and when it is no number.
  [[nodiscard]] std::int64_t Number(std::string_view attribute) const;
  /// Whether the object takes part in the groupware.
  [[nodiscard]] bool HasAccount() const { return Number("peloraAccount") != 0; }

  /// What its page would call an object with these attributes and nothing else, by the field that
  /// writes `attribute` among others; empty when it has no such field, or the page chooses nothing.
  [[nodiscard]] std::string ChoiceOf(std::string_view attribute,
                                     ldap::AttributeMap attributes) const;
  /// The same with what was read of the object.
  [[nodiscard]] std::string ChoiceOf(std::string_view attribute) const;

  /// Whether a value of the attribute can be taken out on the object's tabs.
  [[nodiscard]] bool CanTakeOut(std::string_view attribute) const;

 private:
  ldap::IDirectoryStore& store_;
  const ldap::Entry& entry_;
  std::string_view class_name_;
  const CheckFields& fields_;
};

}  // namespace pelora::session
