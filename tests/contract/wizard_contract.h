// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <string>

#include "platform/shell_extension.h"

// What a wizard owes the pages of its extensions (platform/shell_extension.h, the page
// notifications of platform/dialog_controller.h), as one suite that every wizard runs:
//
//   INSTANTIATE_TEST_SUITE_P(Headless, WizardContract, ::testing::Values(&MakeHeadlessWizard));
//
// in a program that links pelora_wizard_contract. The pages' templates are those of
// contract_dialogs.rc.

namespace pelora::contract {

/// One wizard that has no first page of its own, and the person in front of it, made anew for each
/// test.
class WizardDriver {
 public:
  /// A wizard that still stands goes, asking nobody: its dialogs are told, its pages destroyed.
  virtual ~WizardDriver() = default;

  /// Takes a page, before the wizard is shown. As `AddPropSheetPage`.
  virtual bool AddPage(std::unique_ptr<PropSheetPage> page) = 0;
  /// Shows the wizard with its first page and returns. Behind the pages that it took stands a last
  /// one of its own.
  virtual void Show() = 0;
  [[nodiscard]] virtual bool IsOpen() const = 0;
  [[nodiscard]] virtual std::size_t CurrentPage() const = 0;
  /// What the wizard's head shows.
  [[nodiscard]] virtual std::string Title() const = 0;

  /// Clicks the button.
  virtual void ClickNext() = 0;
  virtual void ClickBack() = 0;
  virtual void ClickCancel() = 0;
};

using WizardFactory = std::unique_ptr<WizardDriver> (*)();

class WizardContract : public ::testing::TestWithParam<WizardFactory> {
 protected:
  [[nodiscard]] WizardDriver& Wizard() { return *wizard_; }
  /// Destroys the wizard, open or not.
  void DestroyWizard() { wizard_.reset(); }

 private:
  std::unique_ptr<WizardDriver> wizard_ = GetParam()();
};

}  // namespace pelora::contract
