// SPDX-License-Identifier: Apache-2.0
// Two administrators of the tests' own store in memory.
#include "hosts/ldap/new_entry.h"
#include "tests/contract/guarded_sheet_contract.h"
#include "tests/support/memory_store.h"

namespace pelora::contract {
namespace {

class MemoryCompany final : public GuardedCompany {
 public:
  MemoryCompany() {
    for (const std::string& dn : Users()) {
      ldap::Entry entry{.dn = dn, .attributes = {{"objectClass", {"user"}}}};
      ldap::CompleteClasses(entry);
      store_.Place(std::move(entry));
    }
  }

  [[nodiscard]] ldap::IDirectoryStore& First() override { return store_; }
  [[nodiscard]] ldap::IDirectoryStore& Second() override { return store_; }
  [[nodiscard]] std::vector<std::string> Users() override {
    return {"CN=Ada,DC=memory", "CN=Bob,DC=memory", "CN=Cara,DC=memory"};
  }

 private:
  pelora::testing::MemoryStore store_;
};

std::unique_ptr<GuardedCompany> MakeCompany() { return std::make_unique<MemoryCompany>(); }

INSTANTIATE_TEST_SUITE_P(Memory, GuardedSheetContract, ::testing::Values(&MakeCompany));

}  // namespace
}  // namespace pelora::contract
