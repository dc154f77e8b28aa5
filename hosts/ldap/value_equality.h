// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "hosts/ldap/schema.h"

namespace pelora::ldap {

/// What all spellings have in common that a directory takes for one value: numbers are compared as
/// numbers, texts and names without case.
[[nodiscard]] std::string ComparisonKey(Syntax syntax, const std::string& value);

/// What all spellings have in common that somebody who changes a value takes for one: as
/// `ComparisonKey`, but of a text the case of a letter is a difference. It is one to whoever
/// corrects it.
[[nodiscard]] std::string EditingKey(Syntax syntax, const std::string& value);

}  // namespace pelora::ldap
