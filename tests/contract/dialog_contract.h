// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>

#include "platform/modal_dialogs.h"
#include "tests/contract/dialog_player.h"

// The contract of the dialog port (platform/dialog.h, platform/dialog_controller.h,
// platform/modal_dialogs.h), as one suite that every adapter of the port runs:
//
//   INSTANTIATE_TEST_SUITE_P(Headless, DialogContract, ::testing::Values(&MakeHeadlessDriver));
//
// in a program that links pelora_dialog_contract. The dialogs are those of contract_dialogs.rc.

namespace pelora::contract {

/// A dialog that stands open, as a page does that no sheet holds. Destroying it closes the dialog,
/// which tells its controller so; the `IDialog` goes with it.
class OpenDialog {
 public:
  virtual ~OpenDialog() = default;
  [[nodiscard]] virtual DialogPlayer& User() = 0;
};

/// One adapter of the dialog port, made anew for each test.
class DialogDriver {
 public:
  virtual ~DialogDriver() = default;

  /// Makes a page's dialog from a template of contract_dialogs.rc, tells the controller and shows
  /// the dialog. Nothing when there is no such template; the controller is told nothing then.
  [[nodiscard]] virtual std::unique_ptr<OpenDialog> Open(DialogId dialog,
                                                         IDialogController& controller) = 0;

  /// The adapter's modal dialogs, over the same templates.
  [[nodiscard]] virtual IModalDialogs& ModalDialogs() = 0;
  /// Queues the script of the next modal dialog that opens and is not over by then. Scripts may run
  /// modal dialogs inside one another.
  virtual void PlayNext(DialogScript script) = 0;
};

using DialogDriverFactory = std::unique_ptr<DialogDriver> (*)();

class DialogContract : public ::testing::TestWithParam<DialogDriverFactory> {
 protected:
  [[nodiscard]] DialogDriver& Driver() { return *driver_; }

 private:
  std::unique_ptr<DialogDriver> driver_ = GetParam()();
};

}  // namespace pelora::contract
