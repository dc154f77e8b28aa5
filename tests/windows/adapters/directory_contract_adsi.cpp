// SPDX-License-Identifier: Apache-2.0
// The system's directory interfaces behind the port, held to the contract: from the adapter through
// the system's binding functions and values to a directory in memory.
#include "hosts/windows/adsi/ads_directory.h"
#include "tests/contract/fake_under_test.h"
#include "tests/windows/provider/ldap_namespace.h"

namespace pelora::contract {
namespace {

class AdsiUnderTest final : public FakeUnderTest {
 public:
  // Whatever an adapter forgets to release shows here.
  ~AdsiUnderTest() override { EXPECT_EQ(fake().live_objects(), 0U); }

  [[nodiscard]] IDirectoryService& Service() override { return adapter_; }

 private:
  windows::test::LdapNamespace provider_{fake()};
  windows::AdsDirectory adapter_;
};

std::unique_ptr<DirectoryUnderTest> MakeAdsi() { return std::make_unique<AdsiUnderTest>(); }

INSTANTIATE_TEST_SUITE_P(Adsi, DirectoryContract, ::testing::Values(&MakeAdsi));

}  // namespace
}  // namespace pelora::contract
