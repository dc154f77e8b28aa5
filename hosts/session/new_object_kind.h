// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "hosts/session/object_class.h"

namespace pelora::session {

/// What an object of a class logs on as, if it does.
enum class AccountForm : std::uint8_t { kNone, kUser, kGroup, kComputer };

/// A kind of object that can be made.
struct NewObjectKind {
  /// LDAP display name.
  std::string_view class_name;
  /// What scripts call objects of the class.
  std::string_view word;
  /// With the mnemonic that it has in a menu.
  std::string_view menu_text;
  ObjectIcon icon = ObjectIcon::kOther;
  /// Label of the name on a program's own first page; empty where an extension asks for the name.
  std::string_view name_label = {};
  /// It has a first and a last name, from which its name follows.
  bool is_person = false;
  AccountForm account = AccountForm::kNone;
  std::string_view logon_label = {};
  std::size_t longest_logon_name = 0;

  [[nodiscard]] bool HasOwnPage() const { return !name_label.empty(); }
};

/// Every kind, in the order of the menu.
[[nodiscard]] std::span<const NewObjectKind> NewObjectKinds();

/// What objects of the kind are called, without a mnemonic.
[[nodiscard]] std::string TextOf(const NewObjectKind& kind);

}  // namespace pelora::session
