// SPDX-License-Identifier: Apache-2.0
// The directory in memory, held to the contract.
#include <algorithm>
#include <charconv>

#include "directory/attribute_catalogue.h"
#include "tests/contract/directory_contract.h"
#include "tests/support/fake_directory.h"
#include "tests/support/fault_directory.h"

namespace pelora::contract {
namespace {

using pelora::testing::FakeAttributes;
using pelora::testing::FakeDirectory;
using pelora::testing::FaultDirectory;

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

class FakeUnderTest : public DirectoryUnderTest {
 public:
  FakeUnderTest() { fake_.DefineAttribute(kBoolean, {.type = VT_BOOL, .is_single_valued = true}); }

  [[nodiscard]] IDirectoryService& Service() override { return fake_; }
  [[nodiscard]] std::string Container() const override { return "OU=Contract,DC=fake,DC=example"; }

  void Add(ObjectKind kind, const std::string& dn, const StoredAttributes& attributes) override {
    FakeAttributes values;
    for (const auto& [name, stored] : attributes) values[name] = ToVariant(name, stored);
    fake_.AddObject(ToPath(dn), std::move(values), InterfacesOf(kind));
  }
  void Remove(const std::string& dn) override { fake_.RemoveObject(ToPath(dn)); }
  void Set(const std::string& dn, const std::string& attribute,
           const std::vector<std::string>& values) override {
    fake_.SetValue(ToPath(dn), attribute, ToVariant(attribute, values));
  }
  [[nodiscard]] StoredAttributes Stored(const std::string& dn) override {
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

 protected:
  [[nodiscard]] FakeDirectory& fake() { return fake_; }

 private:
  FakeDirectory fake_;
};

/// The fault decorator, which has to be invisible as long as no fault is planned.
class FaultUnderTest final : public FakeUnderTest {
 public:
  [[nodiscard]] IDirectoryService& Service() override { return faulty_; }

 private:
  FaultDirectory faulty_{fake()};
};

std::unique_ptr<DirectoryUnderTest> MakeFake() { return std::make_unique<FakeUnderTest>(); }
std::unique_ptr<DirectoryUnderTest> MakeFaulty() { return std::make_unique<FaultUnderTest>(); }

INSTANTIATE_TEST_SUITE_P(Fake, DirectoryContract, ::testing::Values(&MakeFake));
INSTANTIATE_TEST_SUITE_P(FaultDecorator, DirectoryContract, ::testing::Values(&MakeFaulty));

}  // namespace
}  // namespace pelora::contract
