// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/commands/address_pattern.h"

#include <algorithm>
#include <array>

#include "hosts/ldap/case_fold.h"
#include "hosts/ldap/entry_values.h"
#include "hosts/session/commands/ascii_letters.h"

namespace pelora::session {
namespace {

struct Placeholder {
  std::string_view name;
  std::string_view attribute;
  std::string_view words;
};

constexpr std::array kPlaceholders = {
    Placeholder{"logon", "sAMAccountName", "logon name"},
    Placeholder{"first", "givenName", "first name"},
    Placeholder{"last", "sn", "last name"},
    Placeholder{"name", "cn", "name"},
};

const Placeholder* FindPlaceholder(std::string_view name) {
  const auto* const found = std::ranges::find(kPlaceholders, name, &Placeholder::name);
  return found == kPlaceholders.end() ? nullptr : found;
}

}  // namespace

std::vector<std::string> AddressPattern::Attributes() {
  std::vector<std::string> attributes;
  for (const Placeholder& one : kPlaceholders) attributes.emplace_back(one.attribute);
  return attributes;
}

std::string AddressPattern::WhyWrong(bool takes_star) const {
  std::string_view rest = text_;
  while (true) {
    const std::size_t open = rest.find_first_of("{}");
    if (open == std::string_view::npos) break;
    const std::size_t close = rest.find('}', open);
    if (rest[open] == '}' || close == std::string_view::npos) {
      return "\"{\" and \"}\" stand around a name: {logon}@example.org.";
    }
    const std::string_view name = rest.substr(open + 1, close - open - 1);
    if (FindPlaceholder(name) == nullptr) {
      return "{" + std::string(name) +
             "} is not known; there are {logon}, {first}, {last} and {name}.";
    }
    rest.remove_prefix(close + 1);
  }
  const auto stars = std::ranges::count(text_, '*');
  if (stars > 0 && !takes_star) return "An address has no \"*\".";
  if (stars > 1) return "One \"*\" only can stand for any text.";
  return {};
}

AddressPattern::Made AddressPattern::For(const ldap::Entry& entry, std::string_view star) const {
  Made made;
  std::string_view rest = text_;
  while (!rest.empty()) {
    if (rest.front() == '*') {
      made.text += star;
      rest.remove_prefix(1);
      continue;
    }
    const std::size_t close = rest.front() == '{' ? rest.find('}') : std::string_view::npos;
    const Placeholder* const placeholder =
        close == std::string_view::npos ? nullptr : FindPlaceholder(rest.substr(1, close - 1));
    if (placeholder == nullptr) {
      made.text += rest.front();
      rest.remove_prefix(1);
      continue;
    }
    rest.remove_prefix(close + 1);
    const std::string value = ldap::FirstValue(entry, std::string(placeholder->attribute));
    const std::string words(placeholder->words);
    if (value.empty()) return {.text = {}, .missing = "It has no " + words + "."};
    const std::optional<std::string> letters = InAsciiLetters(value);
    if (!letters) {
      return {.text = {},
              .missing = "Its " + words + " has letters that have no counterpart from a to z."};
    }
    made.text += *letters;
  }
  return made;
}

std::optional<std::string> AddressPattern::Match(const ldap::Entry& entry,
                                                 std::string_view address) const {
  const Made made = For(entry);
  if (!made.missing.empty()) return std::nullopt;
  const std::string wanted = ldap::FoldCase(made.text);
  const std::string given = ldap::FoldCase(address);
  const std::size_t star = wanted.find('*');
  if (star == std::string::npos) return wanted == given ? std::optional("") : std::nullopt;
  const std::string_view before = std::string_view(wanted).substr(0, star);
  const std::string_view behind = std::string_view(wanted).substr(star + 1);
  const bool fits = given.size() >= before.size() + behind.size() && given.starts_with(before) &&
                    given.ends_with(behind);
  if (!fits) return std::nullopt;
  // Folding may change how long a text is; what stands for the star is taken in the folded one
  // then.
  const std::string_view source = given.size() == address.size() ? address : given;
  return std::string(source.substr(before.size(), given.size() - before.size() - behind.size()));
}

}  // namespace pelora::session
