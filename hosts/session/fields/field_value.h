// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/ldap/directory_store.h"
#include "hosts/session/fields/field_catalogue.h"
#include "platform/ads.h"
#include "platform/one_of.h"

namespace pelora::session {

/// What a field holds: nothing, a flag, a number, a text, or a list of texts.
using FieldValue = OneOf<std::monostate, bool, std::int64_t, std::string, std::vector<std::string>>;

/// Whether a stored name is that of a deleted object, which lists do not show.
[[nodiscard]] bool IsHiddenName(const std::string& name);

/// Reads a field of an object from its attributes, as its tab shows it: a flag that is not set is
/// no, a number that is not set is nothing, names of deleted objects are left out. `object` is
/// bound to the same entry; only choices ask it.
[[nodiscard]] FieldValue ReadField(const Field& field, const ldap::Entry& entry, IADs& object);

/// The value as it is printed, and given: yes or no, digits, the text, a list with `;`. Empty for
/// nothing.
[[nodiscard]] std::string PrintedText(const FieldValue& value);
/// The lines of a value: one each of a list, one for all other values, none for nothing.
[[nodiscard]] std::vector<std::string> PrintedLines(const FieldValue& value);

/// A choice as scripts name it: its text with hyphens for blanks.
[[nodiscard]] std::string ChoiceWord(std::string_view text);
/// The choice of a word, hyphens or blanks, in any case; none for another word.
[[nodiscard]] std::optional<std::size_t> ChoiceOfWord(const Field& field, std::string_view word);

/// The flag that a word stands for; none for another word.
[[nodiscard]] std::optional<bool> FlagOfWord(std::string_view word);

}  // namespace pelora::session
