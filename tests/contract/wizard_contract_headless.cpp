// SPDX-License-Identifier: Apache-2.0
// The wizard in memory, held to the contract.
#include <optional>
#include <utility>

#include "hosts/headless/headless_new_object_wizard.h"
#include "tests/contract/contract_resources.h"
#include "tests/contract/pages_extension.h"
#include "tests/contract/wizard_contract.h"

namespace pelora::contract {
namespace {

class HeadlessWizardDriver final : public WizardDriver {
 public:
  bool AddPage(std::unique_ptr<PropSheetPage> page) override {
    pages_.push_back(std::move(page));
    return true;
  }
  void Show() override {
    EXPECT_EQ(wizard_.AddExtension(
                  Ref<IDsAdminNewObjExt>::Adopt(new PagesExtension(std::exchange(pages_, {})))),
              S_OK);
    wizard_.Show();
  }
  [[nodiscard]] bool IsOpen() const override { return wizard_.IsOpen(); }
  [[nodiscard]] std::size_t CurrentPage() const override { return wizard_.CurrentPage(); }
  [[nodiscard]] std::string Title() const override { return wizard_.Title(CurrentPage()); }
  void ClickNext() override { wizard_.Next(); }
  void ClickBack() override { wizard_.Back(); }
  void ClickCancel() override { wizard_.Cancel(); }

 private:
  std::vector<std::unique_ptr<PropSheetPage>> pages_;
  resources::ResourceFile templates_ =
      resources::ResourceFile::Read(ContractResourceBytes()).value.value();
  HeadlessNewObjectWizard wizard_{templates_, {}, sheets::WizardRole::kPrimary};
};

std::unique_ptr<WizardDriver> MakeWizard() { return std::make_unique<HeadlessWizardDriver>(); }

INSTANTIATE_TEST_SUITE_P(Headless, WizardContract, ::testing::Values(&MakeWizard));

}  // namespace
}  // namespace pelora::contract
