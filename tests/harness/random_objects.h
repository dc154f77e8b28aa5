// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "directory/attribute_catalogue.h"
#include "hosts/ldap/directory_store.h"
#include "tests/harness/dice.h"

// Objects as nobody would think them up: sound values, odd ones, and none.

namespace pelora::testing {

/// Every object class for which tabs are registered.
[[nodiscard]] std::vector<std::string> ClassesWithTabs();

/// Names of one object of a class or of a few.
[[nodiscard]] std::vector<std::string> SomeNames(const Dice& dice);

/// Names of the objects that choosers give: two.
[[nodiscard]] const std::vector<std::string>& ChosenNames();

/// Values that an attribute may have, or none.
[[nodiscard]] ldap::AttributeValues AnyValues(const Attribute& attribute, const Dice& dice);

/// Whether `AnyValues` may give a value to an attribute of one.
[[nodiscard]] bool IsAnyValue(std::string_view attribute, const std::string& value);

/// Gives an entry values in most attributes of the catalogue, those of which its tabs know nothing
/// among them, in place of what it has.
void GiveAnyValues(ldap::Entry& entry, const Dice& dice);

}  // namespace pelora::testing
