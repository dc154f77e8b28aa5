// SPDX-License-Identifier: Apache-2.0
// The directory in memory, held to the contract.
#include "tests/contract/fake_under_test.h"
#include "tests/support/fault_directory.h"

namespace pelora::contract {
namespace {

using pelora::testing::FaultDirectory;

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
