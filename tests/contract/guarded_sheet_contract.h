// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "hosts/ldap/directory_store.h"

// What a sheet whose tabs are guarded owes two administrators who work on the same objects, as one
// suite that every store plays:
//
//   INSTANTIATE_TEST_SUITE_P(Ldb, GuardedSheetContract, ::testing::Values(&MakeCompany));
//
// in a program that links pelora_guarded_sheet_contract.

namespace pelora::contract {

/// A directory with three users, and two administrators' ways into it.
class GuardedCompany {
 public:
  virtual ~GuardedCompany() = default;

  [[nodiscard]] virtual ldap::IDirectoryStore& First() = 0;
  [[nodiscard]] virtual ldap::IDirectoryStore& Second() = 0;
  /// Distinguished names of the three.
  [[nodiscard]] virtual std::vector<std::string> Users() = 0;
};

using GuardedCompanyFactory = std::unique_ptr<GuardedCompany> (*)();

class GuardedSheetContract : public ::testing::TestWithParam<GuardedCompanyFactory> {
 protected:
  using Lines = std::vector<std::string>;

  /// Each user has an account, three addresses, and a quota of 500 of his own.
  GuardedSheetContract();

  [[nodiscard]] ldap::IDirectoryStore& First() { return company_->First(); }
  [[nodiscard]] ldap::IDirectoryStore& Second() { return company_->Second(); }
  [[nodiscard]] const std::string& User(std::size_t number = 0) const { return users_[number]; }
  [[nodiscard]] const Lines& Users() const { return users_; }

  /// What is stored of an attribute, sorted; read by the second administrator.
  [[nodiscard]] Lines Stored(const std::string& attribute, std::size_t user = 0);
  /// The second administrator gives an attribute these values, past any sheet.
  void Set(const std::string& attribute, const Lines& values, std::size_t user = 0);

 private:
  std::unique_ptr<GuardedCompany> company_ = GetParam()();
  Lines users_ = company_->Users();
};

}  // namespace pelora::contract
