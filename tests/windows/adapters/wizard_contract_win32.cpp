// SPDX-License-Identifier: Apache-2.0
// The system's own wizards with the adapter's pages in them. The contract says what these wizards
// do, so that the wizards of other hosts do the same.
#include <array>
#include <optional>
#include <utility>
#include <vector>

#include "hosts/windows/values/wide_text.h"
#include "tests/contract/wizard_contract.h"
#include "tests/windows/adapters/waiting_pages.h"
#include "tests/windows/support/blank_page.h"
#include "tests/windows/support/sheet_window.h"

namespace pelora::contract {
namespace {

using windows::test::BlankPage;
using windows::test::SheetWindow;

class Win32WizardDriver final : public WizardDriver {
 public:
  Win32WizardDriver() = default;
  ~Win32WizardDriver() override {
    if (wizard_) wizard_->Destroy();
  }

  bool AddPage(std::unique_ptr<PropSheetPage> page) override {
    return waiting_.Add(std::move(page));
  }
  void Show() override {
    std::vector<HPROPSHEETPAGE> pages = waiting_.Take();
    pages.push_back(last_page_.Make());
    wizard_.emplace(std::move(pages), PSH_WIZARD);
    AllowBothWays();
  }
  [[nodiscard]] bool IsOpen() const override { return wizard_->IsOpen(); }
  [[nodiscard]] std::size_t CurrentPage() const override {
    return static_cast<std::size_t>(SendMessageW(wizard_->window(), PSM_HWNDTOINDEX,
                                                 reinterpret_cast<WPARAM>(wizard_->Page()), 0));
  }
  [[nodiscard]] std::string Title() const override {
    std::array<wchar_t, 100> text{};
    GetWindowTextW(wizard_->window(), text.data(), static_cast<int>(text.size()));
    return windows::ToNarrow(text.data());
  }
  void ClickNext() override { Click(kNextButton); }
  void ClickBack() override { Click(kBackButton); }
  void ClickCancel() override { Click(IDCANCEL); }

 private:
  static constexpr int kBackButton = 0x3023;
  static constexpr int kNextButton = 0x3024;

  void Click(int button) {
    wizard_->Press(button);
    if (wizard_->IsOpen()) AllowBothWays();
  }
  /// What is enabled is said by the pages, and these say nothing.
  void AllowBothWays() {
    SendMessageW(wizard_->window(), PSM_SETWIZBUTTONS, 0, PSWIZB_BACK | PSWIZB_NEXT);
  }

  BlankPage last_page_;
  windows::test::WaitingPages waiting_;
  std::optional<SheetWindow> wizard_;
};

std::unique_ptr<WizardDriver> MakeWizard() { return std::make_unique<Win32WizardDriver>(); }

INSTANTIATE_TEST_SUITE_P(Win32, WizardContract, ::testing::Values(&MakeWizard));

}  // namespace
}  // namespace pelora::contract
