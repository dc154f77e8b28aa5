// SPDX-License-Identifier: Apache-2.0
// The tests' own store in memory, held to the contract of directories.
#include <stdexcept>

#include "hosts/ldap/new_entry.h"
#include "hosts/ldap/store_directory_service.h"
#include "tests/contract/directory_contract.h"
#include "tests/support/memory_store.h"

namespace pelora::contract {
namespace {

std::string ClassOf(ObjectKind kind) {
  switch (kind) {
    case ObjectKind::kUser:
      return "user";
    case ObjectKind::kGroup:
      return "group";
    case ObjectKind::kOrganizationalUnit:
      return "organizationalUnit";
  }
  return {};
}

class MemoryUnderTest final : public DirectoryUnderTest {
 public:
  MemoryUnderTest() {
    store_.Place(
        {.dn = Container(), .attributes = {{"objectClass", {"top", "organizationalUnit"}}}});
  }

  [[nodiscard]] IDirectoryService& Service() override { return service_; }
  [[nodiscard]] std::string Container() const override {
    return std::string("OU=Sales,") + pelora::testing::MemoryStore::kBase;
  }

  void Add(ObjectKind kind, const std::string& dn, const StoredAttributes& attributes) override {
    ldap::Entry entry{.dn = dn, .attributes = {{"objectClass", {ClassOf(kind)}}}};
    ldap::CompleteClasses(entry);
    for (const auto& [name, values] : attributes) entry.attributes[name] = values;
    store_.Place(std::move(entry));
  }
  void Remove(const std::string& dn) override {
    pelora::testing::MemoryStore::Entries entries = store_.entries();
    if (entries.erase(ldap::NameKey(dn)) != 1) throw std::logic_error("there is no " + dn);
    store_.SetEntries(std::move(entries));
  }
  void Set(const std::string& dn, const std::string& attribute,
           const std::vector<std::string>& values) override {
    ldap::Entry entry{.dn = dn, .attributes = store_.Stored(dn)};
    entry.attributes.erase(attribute);
    if (!values.empty()) entry.attributes[attribute] = values;
    store_.Place(std::move(entry));
  }
  [[nodiscard]] StoredAttributes Stored(const std::string& dn) override {
    const ldap::AttributeMap stored = store_.Stored(dn);
    return {stored.begin(), stored.end()};
  }

 private:
  pelora::testing::MemoryStore store_;
  ldap::StoreDirectoryService service_{store_};
};

std::unique_ptr<DirectoryUnderTest> MakeMemory() { return std::make_unique<MemoryUnderTest>(); }

INSTANTIATE_TEST_SUITE_P(Memory, DirectoryContract, ::testing::Values(&MakeMemory));

}  // namespace
}  // namespace pelora::contract
