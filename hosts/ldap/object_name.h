// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace pelora::ldap {

/// A value (UTF-8) as it is written within a distinguished name: signs that have a meaning there
/// stand behind a backslash, as do a blank or "#" at the beginning and a blank at the end; control
/// characters are written in hexadecimal. A "/" stands bare.
[[nodiscard]] std::string EscapeNameValue(std::string_view value);

/// The attribute that names objects of a class (an LDAP display name, in any case): `OU` for
/// organisational units, `CN` otherwise.
[[nodiscard]] std::string_view NamingAttributeOfClass(std::string_view object_class);

/// Distinguished name of the object of that class and name right below `container`.
[[nodiscard]] std::string ChildName(std::string_view container, std::string_view object_class,
                                    std::string_view name);

/// The first part of a distinguished name, as it is written: "CN=Ada".
[[nodiscard]] std::string_view FirstPart(std::string_view dn);

/// The name of the object that another lies right below: what follows its first part. Empty for a
/// name of one part.
[[nodiscard]] std::string_view ContainerOf(std::string_view dn);

/// The name that an object gets that is called `name` from now on: its first part keeps its
/// attribute.
[[nodiscard]] std::string RenamedName(std::string_view dn, std::string_view name);

/// The name that an object gets in another container.
[[nodiscard]] std::string MovedName(std::string_view dn, std::string_view container);

}  // namespace pelora::ldap
