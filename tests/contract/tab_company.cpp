// SPDX-License-Identifier: Apache-2.0
#include "tests/contract/tab_company.h"

#include <algorithm>
#include <map>

#include "directory/ascii_case.h"
#include "directory/attribute_catalogue.h"
#include "hosts/ldap/ldif_lines.h"
#include "hosts/ldap/sample_company.h"

namespace pelora::contract {
namespace {

using pelora::testing::FakeAttributes;
using pelora::testing::FakeDirectory;
using Values = std::vector<std::string>;

const Attribute* FindAttribute(std::string_view name) {
  const auto* found = std::ranges::find_if(kAttributeCatalogue, [&](const Attribute& attribute) {
    return EqualsWithoutCase(attribute.name, name);
  });
  return found == kAttributeCatalogue.end() ? nullptr : found;
}

Variant ToVariant(const Attribute& attribute, const Values& values) {
  const bool is_number =
      attribute.encoding == Encoding::kFlag || attribute.encoding == Encoding::kInteger;
  if (is_number) return Variant::Integer(std::stoi(values.front()));
  if (values.size() == 1) return Variant::String(values.front());
  return Variant::StringArray(values);
}

/// The value of a name's first part, as the directory gives it.
std::string CommonName(const std::string& name) {
  std::string common_name;
  for (std::size_t at = name.find('=') + 1; at < name.size() && name[at] != ','; ++at) {
    if (name[at] == '\\') ++at;
    common_name += name[at];
  }
  return common_name;
}

void AddObject(FakeDirectory& directory, const ldap::LdifBlock& block) {
  std::string name;
  std::map<const Attribute*, Values> values;
  for (const std::string& line : block.lines) {
    const std::size_t colon = line.find(": ");
    const std::string attribute = line.substr(0, colon);
    const std::string value = line.substr(colon + 2);
    if (attribute == "dn") name = value;
    if (const Attribute* known = FindAttribute(attribute)) values[known].push_back(value);
  }
  const std::string common_name = CommonName(name);
  FakeAttributes attributes = {{"cn", Variant::String(common_name)},
                               {"name", Variant::String(common_name)},
                               {"distinguishedName", Variant::String(name)}};
  for (const auto& [attribute, list] : values) {
    attributes[std::string(attribute->name)] = ToVariant(*attribute, list);
  }
  directory.AddObject(TabPathOf(name), std::move(attributes));
}

std::string TextOf(const Variant& value) {
  return value.type() == VT_I4 ? std::to_string(value.integer()) : value.string();
}

Values ToTexts(const Variant& value) {
  if (value.IsEmpty()) return {};
  if (value.type() != kVariantArray) return {TextOf(value)};
  Values texts;
  for (const Variant& element : value.array()) texts.push_back(TextOf(element));
  return texts;
}

}  // namespace

std::string TabPathOf(const std::string& name) {
  std::string path = "LDAP://";
  for (const char letter : name) path += letter == '/' ? "\\/" : std::string(1, letter);
  return path;
}

void AddSampleCompany(FakeDirectory& directory) {
  for (const ldap::LdifBlock& block : ldap::SplitLdif(ldap::SampleCompanyLdif())) {
    AddObject(directory, block);
  }
}

void GiveIn(FakeDirectory& directory, const std::string& name, const TabValues& values) {
  for (const auto& [attribute, list] : values) {
    directory.SetValue(TabPathOf(name), attribute,
                       list.empty() ? Variant() : ToVariant(*FindAttribute(attribute), list));
  }
}

TabValues StoredAt(const FakeDirectory& directory, const std::string& path) {
  TabValues values;
  for (const Attribute& attribute : kAttributeCatalogue) {
    values[std::string(attribute.name)] = ToTexts(directory.Value(path, attribute.name));
  }
  return values;
}

TabValues StoredIn(const FakeDirectory& directory, const std::string& name) {
  return StoredAt(directory, TabPathOf(name));
}

}  // namespace pelora::contract
