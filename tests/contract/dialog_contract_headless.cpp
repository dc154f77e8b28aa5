// SPDX-License-Identifier: Apache-2.0
// The dialogs, sheets and texts in memory, held to the contracts.
#include <optional>
#include <utility>

#include "hosts/headless/headless_modal_dialogs.h"
#include "hosts/headless/headless_property_sheet.h"
#include "hosts/headless/headless_text_service.h"
#include "tests/contract/contract_resources.h"
#include "tests/contract/dialog_contract.h"
#include "tests/contract/headless_player.h"
#include "tests/contract/property_sheet_contract.h"
#include "tests/contract/text_service_contract.h"

namespace pelora::contract {
namespace {

resources::ResourceFile Templates() {
  return resources::ResourceFile::Read(ContractResourceBytes()).value.value();
}

class HeadlessOpenDialog final : public OpenDialog {
 public:
  HeadlessOpenDialog(const resources::DialogTemplate& described, IDialogController& controller)
      : dialog_(described, controller), player_(dialog_) {
    dialog_.Open();
  }
  [[nodiscard]] DialogPlayer& User() override { return player_; }

 private:
  HeadlessDialog dialog_;
  HeadlessPlayer player_;
};

class HeadlessDriver final : public DialogDriver {
 public:
  std::unique_ptr<OpenDialog> Open(DialogId dialog, IDialogController& controller) override {
    const auto described = templates_.Dialog(dialog);
    if (!described.value) return nullptr;
    return std::make_unique<HeadlessOpenDialog>(*described.value, controller);
  }
  IModalDialogs& ModalDialogs() override { return modal_dialogs_; }
  void PlayNext(DialogScript script) override {
    modal_dialogs_.PlayNext([script = std::move(script)](HeadlessUser& user) {
      HeadlessPlayer player(user.dialog());
      script(player);
    });
  }

 private:
  resources::ResourceFile templates_ = Templates();
  HeadlessModalDialogs modal_dialogs_{templates_};
};

class HeadlessSheetDriver final : public PropertySheetDriver {
 public:
  bool AddPage(std::unique_ptr<PropSheetPage> page) override {
    return sheet_.AddPage(std::move(page));
  }
  void Show() override { sheet_.Show(); }
  [[nodiscard]] bool IsOpen() const override { return sheet_.IsOpen(); }
  void SelectPage(std::size_t page) override { sheet_.SelectPage(page); }
  [[nodiscard]] std::size_t CurrentPage() const override { return sheet_.CurrentPage(); }
  [[nodiscard]] std::string TabText(std::size_t page) const override { return sheet_.Title(page); }
  [[nodiscard]] DialogPlayer& User() override {
    return player_.emplace(*sheet_.Dialog(sheet_.CurrentPage()));
  }
  [[nodiscard]] bool IsApplyEnabled() const override { return sheet_.IsApplyEnabled(); }
  void ClickApply() override { sheet_.Apply(); }
  void ClickOk() override { sheet_.Ok(); }
  void ClickCancel() override { sheet_.Cancel(); }

 private:
  resources::ResourceFile templates_ = Templates();
  HeadlessPropertySheet sheet_{templates_};
  std::optional<HeadlessPlayer> player_;
};

std::unique_ptr<DialogDriver> MakeDriver() { return std::make_unique<HeadlessDriver>(); }

std::unique_ptr<PropertySheetDriver> MakeSheet() { return std::make_unique<HeadlessSheetDriver>(); }

std::unique_ptr<ITextService> MakeTextService() { return std::make_unique<HeadlessTextService>(); }

INSTANTIATE_TEST_SUITE_P(Headless, TextServiceContract, ::testing::Values(&MakeTextService));
INSTANTIATE_TEST_SUITE_P(Headless, DialogContract, ::testing::Values(&MakeDriver));
INSTANTIATE_TEST_SUITE_P(Headless, PropertySheetContract, ::testing::Values(&MakeSheet));

}  // namespace
}  // namespace pelora::contract
