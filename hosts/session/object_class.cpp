// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/object_class.h"

#include <algorithm>
#include <array>

#include "hosts/ldap/directory_store.h"

namespace pelora::session {
namespace {

constexpr bool kIsContainer = true;
constexpr bool kIsInternal = true;

// A derived class stands before the classes that it is derived from.
constexpr std::array kClasses = {
    ObjectClass{"computer", "Computer", ObjectIcon::kComputer},
    ObjectClass{"inetOrgPerson", "User", ObjectIcon::kUser},
    ObjectClass{"user", "User", ObjectIcon::kUser},
    ObjectClass{"contact", "Contact", ObjectIcon::kContact},
    ObjectClass{"peloraDynamicDistlist", "Dynamic Distribution List", ObjectIcon::kDynamicGroup},
    ObjectClass{"peloraAddresslist", "Address List", ObjectIcon::kAddressList},
    ObjectClass{"group", "Group", ObjectIcon::kGroup},
    ObjectClass{"organizationalUnit", "Organizational Unit", ObjectIcon::kOrganizationalUnit,
                kIsContainer},
    ObjectClass{"builtinDomain", "Container", ObjectIcon::kContainer, kIsContainer},
    ObjectClass{"configuration", "Container", ObjectIcon::kContainer, kIsContainer, kIsInternal},
    ObjectClass{"dMD", "Container", ObjectIcon::kContainer, kIsContainer, kIsInternal},
    ObjectClass{"container", "Container", ObjectIcon::kContainer, kIsContainer},
    ObjectClass{"domainDNS", "Domain", ObjectIcon::kDomain, kIsContainer},
};

bool EqualNames(std::string_view left, std::string_view right) {
  const ldap::AttributeNameLess less;
  return !less(left, right) && !less(right, left);
}

}  // namespace

ObjectKind KindOf(std::span<const std::string> object_classes) {
  for (const ObjectClass& known : kClasses) {
    const auto is_known = [&known](const std::string& name) {
      return EqualNames(name, known.name);
    };
    if (std::ranges::none_of(object_classes, is_known)) continue;
    return {.class_name = std::string(known.name),
            .type_text = std::string(known.type_text),
            .icon = known.icon,
            .is_container = known.is_container,
            .is_internal = known.is_internal};
  }
  ObjectKind other;
  if (!object_classes.empty()) other.class_name = object_classes.back();
  other.type_text = other.class_name;
  return other;
}

}  // namespace pelora::session
