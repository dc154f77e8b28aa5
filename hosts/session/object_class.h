// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace pelora::session {

/// Which picture stands for an object.
enum class ObjectIcon : std::uint8_t {
  kUser,
  kContact,
  kGroup,
  kDynamicGroup,
  kAddressList,
  kComputer,
  kOrganizationalUnit,
  kContainer,
  kDomain,
  kOther,
};

/// What else can be told of an object at a glance.
enum class ObjectMark : std::uint8_t {
  kNone,
  kRoom,
  kEquipment,
  kSharedStore,
  /// An account that nobody can log on with.
  kDisabled,
  /// A user who has no mailbox.
  kNoMailbox,
  /// A computer with a Pelora server.
  kServer,
};

/// How the console shows objects of a directory class.
struct ObjectClass {
  /// LDAP display name.
  std::string_view name;
  std::string_view type_text;
  ObjectIcon icon = ObjectIcon::kOther;
  /// Stands in the tree and is opened by a double click.
  bool is_container = false;
  /// Part of the directory's own machinery, which the console does not show.
  bool is_internal = false;
};

/// What an object is, by the values of its `objectClass`: the most specific class that the console
/// knows. Objects of other classes show the name of the last value as their type.
struct ObjectKind {
  /// LDAP display name of the class that decides which tabs the object gets.
  std::string class_name;
  std::string type_text;
  ObjectIcon icon = ObjectIcon::kOther;
  bool is_container = false;
  bool is_internal = false;

  [[nodiscard]] bool operator==(const ObjectKind&) const = default;
};

[[nodiscard]] ObjectKind KindOf(std::span<const std::string> object_classes);

}  // namespace pelora::session
