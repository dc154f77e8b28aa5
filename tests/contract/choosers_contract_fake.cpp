// SPDX-License-Identifier: Apache-2.0
// The choosers of the tests, in which nobody chooses, held to the contract.
#include "tests/contract/chooser_objects.h"
#include "tests/contract/choosers_contract.h"
#include "tests/unit/page_bench.h"

namespace pelora::contract {
namespace {

class FakeHost final : public ChooserHost {
 public:
  FakeHost() { AddChooserObjects(bench_.directory); }

  [[nodiscard]] const Platform& platform() override { return bench_.platform; }
  void Pick(const Choice& objects) override {
    if (!objects.empty()) bench_.choosers.Choose(ChooserPathsOf(objects));
  }
  void Find(const Choice& containers) override {
    if (containers.empty()) return;
    bench_.choosers.Find(
        pelora::testing::ChosenObjects::AsObjectNames(ContainerPathsOf(containers)));
  }
  void BrowseLaboratory() override {
    bench_.choosers.Browse(kDialogOk, ContainerPathsOf({kLaboratory}).front());
  }
  void CancelBrowser() override {
    bench_.choosers.Browse(kDialogCancel, ContainerPathsOf({kLaboratory}).front());
  }

 private:
  pelora::testing::PageBench bench_;
};

std::unique_ptr<ChooserHost> MakeHost() { return std::make_unique<FakeHost>(); }

INSTANTIATE_TEST_SUITE_P(Fake, ChoosersContract, ::testing::Values(&MakeHost));

}  // namespace
}  // namespace pelora::contract
