// SPDX-License-Identifier: Apache-2.0
// Two administrators of a directory file.
#include "hosts/session/directory_session.h"
#include "tests/contract/guarded_sheet_contract.h"
#include "tests/support/sample_file.h"

namespace pelora::contract {
namespace {

class LdbCompany final : public GuardedCompany {
 public:
  LdbCompany() {
    first_ = session::OpenDirectoryFile(file_.path()).session;
    second_ = session::OpenDirectoryFile(file_.path()).session;
  }

  [[nodiscard]] ldap::IDirectoryStore& First() override { return *first_->store; }
  [[nodiscard]] ldap::IDirectoryStore& Second() override { return *second_->store; }
  [[nodiscard]] std::vector<std::string> Users() override {
    const std::string company = ",OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";
    return {"CN=Birgit Krämer,OU=Vertrieb" + company, "CN=Stefan Ebert,OU=Vertrieb" + company,
            "CN=Ursula Fischer,OU=Fertigung" + company};
  }

 private:
  pelora::testing::SampleFile file_;
  std::unique_ptr<session::DirectorySession> first_;
  std::unique_ptr<session::DirectorySession> second_;
};

std::unique_ptr<GuardedCompany> MakeCompany() { return std::make_unique<LdbCompany>(); }

INSTANTIATE_TEST_SUITE_P(Ldb, GuardedSheetContract, ::testing::Values(&MakeCompany));

}  // namespace
}  // namespace pelora::contract
