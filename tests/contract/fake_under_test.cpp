// SPDX-License-Identifier: Apache-2.0
#include "tests/contract/fake_under_test.h"

#include <algorithm>
#include <charconv>

#include "directory/attribute_catalogue.h"

namespace pelora::contract {
namespace {

using pelora::testing::FakeAttributes;

constexpr std::string_view kBoolean = "showInAdvancedViewOnly";

bool IsInteger(std::string_view name) {
  return std::any_of(
      kAttributeCatalogue.begin(), kAttributeCatalogue.end(), [&](const Attribute& attribute) {
        return attribute.name == name &&
               (attribute.encoding == Encoding::kFlag || attribute.encoding == Encoding::kInteger);
      });
}

Variant ToVariant(std::string_view name, const std::string& stored) {
  if (name == kBoolean) return Variant::OtherType(VT_BOOL);
  if (!IsInteger(name)) return Variant::String(stored);
  std::int32_t number = 0;
  std::from_chars(stored.data(), stored.data() + stored.size(), number);
  return Variant::Integer(number);
}

std::string ToStored(const Variant& value) {
  return value.type() == VT_I4 ? std::to_string(value.integer()) : value.string();
}

/// In a path a "/" of the name is escaped.
std::string ToPath(const std::string& dn) {
  std::string path = "LDAP://";
  for (const char letter : dn) {
    if (letter == '/') path += '\\';
    path += letter;
  }
  return path;
}

Variant ToVariant(std::string_view name, const std::vector<std::string>& stored) {
  if (stored.empty()) return {};
  std::vector<Variant> values;
  for (const std::string& value : stored) values.push_back(ToVariant(name, value));
  return values.size() == 1 ? values.front() : Variant::Array(std::move(values));
}

std::vector<Guid> InterfacesOf(ObjectKind kind) {
  switch (kind) {
    case ObjectKind::kUser:
      return {IID_IADsUser};
    case ObjectKind::kGroup:
      return {};
    case ObjectKind::kOrganizationalUnit:
      return {IID_IADsOU, IID_IADsContainer};
  }
  return {};
}

}  // namespace

FakeUnderTest::FakeUnderTest() {
  fake_.DefineAttribute(kBoolean, {.type = VT_BOOL, .is_single_valued = true});
}

void FakeUnderTest::Add(ObjectKind kind, const std::string& dn,
                        const StoredAttributes& attributes) {
  FakeAttributes values;
  for (const auto& [name, stored] : attributes) values[name] = ToVariant(name, stored);
  fake_.AddObject(ToPath(dn), std::move(values), InterfacesOf(kind));
}

void FakeUnderTest::Remove(const std::string& dn) { fake_.RemoveObject(ToPath(dn)); }

void FakeUnderTest::Set(const std::string& dn, const std::string& attribute,
                        const std::vector<std::string>& values) {
  fake_.SetValue(ToPath(dn), attribute, ToVariant(attribute, values));
}

StoredAttributes FakeUnderTest::Stored(const std::string& dn) {
  StoredAttributes stored;
  const FakeAttributes values = fake_.Values(ToPath(dn)).value();
  for (const auto& [name, value] : values) {
    const bool is_array = value.type() == kVariantArray;
    for (const Variant& element : is_array ? value.array() : std::vector<Variant>{value}) {
      stored[name].push_back(ToStored(element));
    }
  }
  return stored;
}

}  // namespace pelora::contract
