// SPDX-License-Identifier: Apache-2.0
// The system's own property sheets with the adapter's pages in them. The contract says what these
// sheets do, so that the sheets of other hosts do the same.
#include <optional>

#include "tests/contract/property_sheet_contract.h"
#include "tests/windows/adapters/waiting_pages.h"
#include "tests/windows/support/sheet_window.h"

namespace pelora::contract {
namespace {

using windows::test::SheetWindow;
using windows::test::WindowPlayer;

class Win32SheetDriver final : public PropertySheetDriver {
 public:
  Win32SheetDriver() = default;
  ~Win32SheetDriver() override {
    if (sheet_) sheet_->Destroy();
  }

  bool AddPage(std::unique_ptr<PropSheetPage> page) override {
    return waiting_.Add(std::move(page));
  }
  void Show() override { sheet_.emplace(waiting_.Take()); }
  [[nodiscard]] bool IsOpen() const override { return sheet_->IsOpen(); }
  void SelectPage(std::size_t page) override { sheet_->SelectPage(page); }
  [[nodiscard]] std::size_t CurrentPage() const override { return sheet_->CurrentPage(); }
  [[nodiscard]] std::string TabText(std::size_t page) const override {
    return sheet_->TabText(page);
  }
  [[nodiscard]] DialogPlayer& User() override { return player_.emplace(sheet_->Page()); }
  [[nodiscard]] bool IsApplyEnabled() const override { return sheet_->IsApplyEnabled(); }
  void ClickApply() override { sheet_->ClickApply(); }
  void ClickOk() override { sheet_->ClickOk(); }
  void ClickCancel() override { sheet_->ClickCancel(); }

 private:
  windows::test::WaitingPages waiting_;
  std::optional<SheetWindow> sheet_;
  std::optional<WindowPlayer> player_;
};

std::unique_ptr<PropertySheetDriver> MakeSheet() { return std::make_unique<Win32SheetDriver>(); }

INSTANTIATE_TEST_SUITE_P(Win32, PropertySheetContract, ::testing::Values(&MakeSheet));

}  // namespace
}  // namespace pelora::contract
