// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "hosts/ldap/schema.h"

namespace pelora::ldap {

/// What a server publishes of its attributes, one description to a text: `types` are the values of
/// `attributeTypes`, `bounds` those of `extendedAttributeInfo`.
///
/// Syntaxes may stand in quotes, and names in a list. An attribute whose description is not
/// understood, or whose syntax is not known, is left out: it is then an attribute that the
/// directory does not know, and that harms nobody who does not ask for it.
[[nodiscard]] Schema ReadSubschema(const std::vector<std::string>& types,
                                   const std::vector<std::string>& bounds);

/// The syntax that an identifier such as "1.3.6.1.4.1.1466.115.121.1.15" stands for; nothing for an
/// unknown one. A length that follows in braces is passed over.
[[nodiscard]] std::optional<Syntax> SyntaxOfLdapIdentifier(std::string_view identifier);

}  // namespace pelora::ldap
