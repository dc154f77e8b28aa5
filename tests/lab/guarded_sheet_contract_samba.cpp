// SPDX-License-Identifier: Apache-2.0
// Two administrators of a domain.
#include "tests/contract/guarded_sheet_contract.h"
#include "tests/lab/lab_test.h"

namespace pelora::lab {
namespace {

class DomainCompanyOfThree final : public contract::GuardedCompany {
 public:
  DomainCompanyOfThree() {
    static int number = 0;
    const std::string container =
        "OU=Guarded " + std::to_string(++number) + ",OU=Contract," + Base();
    administrator_.Add(container, {{"objectClass", {"organizationalUnit"}}});
    for (const char* const name : {"One", "Two", "Three"}) {
      users_.push_back(std::string("CN=") + name + "," + container);
      administrator_.Add(users_.back(), {{"objectClass", {"user"}}});
    }
  }

  [[nodiscard]] ldap::IDirectoryStore& First() override { return first_->store(); }
  [[nodiscard]] ldap::IDirectoryStore& Second() override { return second_->store(); }
  [[nodiscard]] std::vector<std::string> Users() override { return users_; }

 private:
  LabAdministrator administrator_;
  std::vector<std::string> users_;
  std::unique_ptr<NetworkSession> first_ = OpenSession();
  std::unique_ptr<NetworkSession> second_ = OpenSession();
};

std::unique_ptr<contract::GuardedCompany> MakeCompany() {
  return std::make_unique<DomainCompanyOfThree>();
}

}  // namespace
}  // namespace pelora::lab

namespace pelora::contract {

INSTANTIATE_TEST_SUITE_P(Samba, GuardedSheetContract, ::testing::Values(&lab::MakeCompany));

}  // namespace pelora::contract
