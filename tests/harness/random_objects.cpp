// SPDX-License-Identifier: Apache-2.0
#include "tests/harness/random_objects.h"

#include <algorithm>
#include <utility>

#include "server/console_registration.h"
#include "tests/support/memory_store.h"

namespace pelora::testing {
namespace {

using Lines = std::vector<std::string>;

const std::string kBase = std::string(",") + MemoryStore::kBase;
constexpr std::size_t kMostObjects = 4;

/// Of a list: each of its values is there or is not.
Lines AllOf(const Attribute& attribute) {
  if (attribute.name.ends_with("Features")) return {"imap", "pop3", "unheard-of"};
  if (attribute.encoding == Encoding::kList) return {"c@x.example", "d@x.example"};
  return {"CN=a,DC=x", "CN=b,DC=x"};
}

/// Of an attribute of one value; empty for lists.
Lines OneOf(const Attribute& attribute) {
  if (attribute.name == "peloraResourceType") return {"room", "Equipment", "boat"};
  if (attribute.name == "mail") return {"first@x.example", "b@x.example", "odd one@x.example"};
  if (attribute.name == "peloraAdmin") return {"0", "1", "2", "7"};
  switch (attribute.encoding) {
    case Encoding::kFlag:
      return {"0", "1", "5"};
    case Encoding::kInteger:
      return {"0", "-1", "80", "443", "70000", "4000", "2147483647"};
    case Encoding::kString:
      return {"first", "zweites Wort", ChosenNames().front(), "CN=gone,DC=x"};
    default:
      return {};
  }
}

}  // namespace

std::vector<std::string> ClassesWithTabs() {
  Lines classes;
  for (const std::string_view name : RegisteredObjectClasses()) {
    const bool has_tabs = !DefaultRegistrations(name, ConsoleRole::kPropertyPage).empty();
    if (has_tabs) classes.emplace_back(name);
  }
  return classes;
}

std::vector<std::string> SomeNames(const Dice& dice) {
  Lines names;
  for (std::size_t place = 0; place < kMostObjects; ++place) {
    names.push_back("CN=object" + std::to_string(place) + kBase);
  }
  const std::size_t count = dice(kMostObjects) + 1;
  // In any order.
  for (std::size_t place = 0; place < count; ++place) {
    std::swap(names[place], names[place + dice(kMostObjects - place)]);
  }
  names.resize(count);
  return names;
}

const std::vector<std::string>& ChosenNames() {
  static const Lines names = {"CN=chosen" + kBase, "CN=another" + kBase};
  return names;
}

ldap::AttributeValues AnyValues(const Attribute& attribute, const Dice& dice) {
  if (dice(3) == 0) return {};
  if (const Lines values = OneOf(attribute); !values.empty()) return {values[dice(values.size())]};
  Lines values;
  for (const std::string& value : AllOf(attribute)) {
    if (dice(2) == 0) values.push_back(value);
  }
  return values;
}

bool IsAnyValue(std::string_view attribute, const std::string& value) {
  const auto* const found = std::ranges::find(kAttributeCatalogue, attribute, &Attribute::name);
  return found != kAttributeCatalogue.end() && std::ranges::count(OneOf(*found), value) > 0;
}

void GiveAnyValues(ldap::Entry& entry, const Dice& dice) {
  for (const Attribute& attribute : kAttributeCatalogue) {
    if (attribute.multi_selection == MultiSelectionRule::kNeverWritten) continue;
    if (dice(3) == 0) continue;
    ldap::AttributeValues values = AnyValues(attribute, dice);
    entry.attributes.erase(std::string(attribute.name));
    if (!values.empty()) entry.attributes.emplace(attribute.name, std::move(values));
  }
}

}  // namespace pelora::testing
