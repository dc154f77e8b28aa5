// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <string>

#include "platform/shell_extension.h"
#include "tests/contract/dialog_player.h"

// What a property sheet owes its pages (platform/shell_extension.h, the page notifications of
// platform/dialog_controller.h), as one suite that every native sheet runs:
//
//   INSTANTIATE_TEST_SUITE_P(Headless, PropertySheetContract,
//   ::testing::Values(&MakeHeadlessSheet));
//
// in a program that links pelora_dialog_contract. The pages' templates are those of
// contract_dialogs.rc.

namespace pelora::contract {

/// One property sheet and the person in front of it, made anew for each test.
class PropertySheetDriver {
 public:
  /// A sheet that still stands goes, asking nobody: its dialogs are told, its pages destroyed.
  virtual ~PropertySheetDriver() = default;

  /// Takes a page, before the sheet is shown. As `AddPropSheetPage`.
  virtual bool AddPage(std::unique_ptr<PropSheetPage> page) = 0;
  /// Shows the sheet with its first page and returns (the sheet is not waited for).
  virtual void Show() = 0;
  [[nodiscard]] virtual bool IsOpen() const = 0;

  /// Clicks the tab of a page, by its place from 0.
  virtual void SelectPage(std::size_t page) = 0;
  [[nodiscard]] virtual std::size_t CurrentPage() const = 0;
  [[nodiscard]] virtual std::string TabText(std::size_t page) const = 0;
  /// The person in front of the current page.
  [[nodiscard]] virtual DialogPlayer& User() = 0;

  [[nodiscard]] virtual bool IsApplyEnabled() const = 0;
  /// Clicks the button; a disabled Apply button does not react.
  virtual void ClickApply() = 0;
  virtual void ClickOk() = 0;
  /// Clicks Cancel; where the sheet asks whether changes may be lost, the answer is yes.
  virtual void ClickCancel() = 0;
};

using PropertySheetFactory = std::unique_ptr<PropertySheetDriver> (*)();

class PropertySheetContract : public ::testing::TestWithParam<PropertySheetFactory> {
 protected:
  [[nodiscard]] PropertySheetDriver& Sheet() { return *sheet_; }
  /// Destroys the sheet, open or not.
  void DestroySheet() { sheet_.reset(); }

 private:
  std::unique_ptr<PropertySheetDriver> sheet_ = GetParam()();
};

}  // namespace pelora::contract
