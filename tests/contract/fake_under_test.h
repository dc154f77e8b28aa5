// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/contract/directory_contract.h"
#include "tests/support/fake_directory.h"

namespace pelora::contract {

/// The directory in memory with what the contract needs of it, for suites of what stands in front
/// of it. `Service` is the directory itself, unless a derived class puts something before it.
class FakeUnderTest : public DirectoryUnderTest {
 public:
  FakeUnderTest();

  [[nodiscard]] IDirectoryService& Service() override { return fake_; }
  [[nodiscard]] std::string Container() const override { return "OU=Contract,DC=fake,DC=example"; }

  void Add(ObjectKind kind, const std::string& dn, const StoredAttributes& attributes) override;
  void Remove(const std::string& dn) override;
  void Set(const std::string& dn, const std::string& attribute,
           const std::vector<std::string>& values) override;
  [[nodiscard]] StoredAttributes Stored(const std::string& dn) override;

 protected:
  [[nodiscard]] pelora::testing::FakeDirectory& fake() { return fake_; }

 private:
  pelora::testing::FakeDirectory fake_;
};

}  // namespace pelora::contract
