// SPDX-License-Identifier: Apache-2.0
#include "tests/lab/domain_company.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>
#include <vector>

#include "directory/attribute_catalogue.h"
#include "hosts/ldap/ldif_lines.h"
#include "hosts/ldap/sample_company.h"
#include "tests/contract/tab_scripts.h"
#include "tests/lab/lab.h"

namespace pelora::lab {
namespace {

/// Classes of which objects have tabs.
constexpr std::array<std::string_view, 7> kClasses = {
    "organizationalUnit",   "user", "computer", "contact", "group", "peloraAddresslist",
    "peloraDynamicDistlist"};

struct Object {
  std::string dn;
  Attributes attributes;
};

const Attribute* FindAttribute(std::string_view name) {
  const auto* found = std::ranges::find(kAttributeCatalogue, name, &Attribute::name);
  return found == kAttributeCatalogue.end() ? nullptr : found;
}

Object ReadObject(const ldap::LdifBlock& block) {
  Object object;
  for (const std::string& line : block.lines) {
    const std::size_t colon = line.find(": ");
    const std::string name = line.substr(0, colon);
    std::string value = contract::Rebased(line.substr(colon + 2), DomainCompany::Base());
    if (name == "dn") {
      object.dn = std::move(value);
    } else if (name == "objectClass") {
      // The last one is the object's own; the domain adds those above it.
      object.attributes[name] = {std::move(value)};
    } else if (FindAttribute(name) != nullptr && value.find("\\0ADEL:") == std::string::npos) {
      // No domain takes the name of an object that is gone.
      object.attributes[name].push_back(std::move(value));
    }
  }
  return object;
}

/// By the line with its name. All else every domain has of its own, or it is the schema.
bool IsBelowAUnit(const std::string& line) {
  return line.starts_with("dn: OU=") || line.find(",OU=") != std::string::npos;
}

/// Takes the attributes off that name other objects.
Attributes TakeNames(Attributes& attributes) {
  Attributes names;
  std::erase_if(attributes, [&names](auto& attribute) {
    const Attribute* const known = FindAttribute(attribute.first);
    const bool is_list = known != nullptr && known->encoding == Encoding::kNameList;
    if (is_list) names.insert(attribute);
    return is_list;
  });
  return names;
}

std::string FromBase64(std::string_view text) {
  constexpr std::string_view kDigits =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string bytes;
  std::uint32_t bits = 0;
  int count = 0;
  for (const char letter : text.substr(0, text.find('='))) {
    bits = bits << 6U | static_cast<std::uint32_t>(kDigits.find(letter));
    count += 6;
    if (count < 8) continue;
    count -= 8;
    bytes += static_cast<char>(bits >> count);
  }
  return bytes;
}

}  // namespace

DomainCompany& DomainCompany::Shared() {
  static DomainCompany company;
  return company;
}

std::string DomainCompany::Base() { return "OU=Company,OU=Contract," + lab::Base(); }

DomainCompany::DomainCompany() {
  administrator_.Add(Base(), {{"objectClass", {"organizationalUnit"}}});
  std::vector<Object> with_names;
  for (const ldap::LdifBlock& block : ldap::SplitLdif(ldap::SampleCompanyLdif())) {
    if (!IsBelowAUnit(block.lines.front())) continue;
    Object object = ReadObject(block);
    const std::string object_class = object.attributes["objectClass"].front();
    if (std::ranges::find(kClasses, object_class) == kClasses.end()) continue;
    Attributes names = TakeNames(object.attributes);
    // The domain's schema knows no delegates of such lists.
    if (object_class == "peloraDynamicDistlist") names.clear();
    administrator_.Add(object.dn, object.attributes);
    with_names.push_back({object.dn, std::move(names)});
  }
  // Now everybody is there.
  for (const Object& object : with_names) {
    for (const auto& [name, values] : object.attributes) {
      administrator_.Set(object.dn, name, values);
    }
  }
}

void DomainCompany::Remember(const std::string& dn) {
  if (!before_.contains(dn)) before_[dn] = administrator_.Stored(dn);
}

void DomainCompany::Give(const std::string& dn, const Attributes& values) {
  Remember(dn);
  Attributes now = administrator_.Stored(dn);
  for (const auto& [name, list] : values) {
    if (now[name] != list) administrator_.Set(dn, name, list);
  }
}

void DomainCompany::Restore() {
  for (auto& [dn, before] : before_) {
    Attributes after = administrator_.Stored(dn);
    for (const Attribute& attribute : kAttributeCatalogue) {
      const std::string name(attribute.name);
      if (before[name] != after[name]) administrator_.Set(dn, name, before[name]);
    }
  }
  before_.clear();
}

Attributes StoredInDomain(const std::string& dn) {
  std::vector<std::string> wanted;
  for (const Attribute& attribute : kAttributeCatalogue) wanted.emplace_back(attribute.name);
  Attributes values;
  for (const std::string& line : LdapSearch(dn, wanted)) {
    const std::size_t colon = line.find(':');
    const bool is_coded = line.compare(colon, 3, ":: ") == 0;
    const std::string value = line.substr(colon + (is_coded ? 3 : 2));
    values[line.substr(0, colon)].push_back(is_coded ? FromBase64(value) : value);
  }
  return values;
}

}  // namespace pelora::lab
