// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAbstractButton>
#include <QMessageBox>
#include <memory>

#include "hosts/console/dialogs/message_box.h"
#include "hosts/console/program/console_platform.h"
#include "hosts/console/sheets/make_property_sheet.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/session/directory_session.h"
#include "tests/contract/dialog_contract_qt_player.h"
#include "tests/contract/dialog_contract_qt_scripts.h"
#include "tests/support/fake_choosers.h"
#include "tests/support/fault_directory.h"

namespace pelora::test {

/// What is to fail of what a sheet asks of its directory.
struct SheetFaults {
  /// What the tabs read from and their changes are written to, in place of the session's own.
  ldap::IDirectoryStore* store = nullptr;
  /// Calls of the tabs that fail.
  std::shared_ptr<pelora::testing::FaultPlan> plan{};
  /// Where the writing is talked about; null: in boxes.
  session::IWritingDesk* desk = nullptr;
  /// Who does what takes its time; null: it is done at once.
  session::IErrands* errands = nullptr;
  /// Where it is kept what was written; null: nowhere.
  session::ChangeHistory* history = nullptr;
};

/// A selection's property sheet on the screen, over a directory, with the person in front of it.
class OpenSheet {
 public:
  OpenSheet(session::DirectorySession& session, const resources::ResourceFile& module,
            const std::vector<session::DirectoryObject>& selection, const SheetFaults& faults = {});

  /// Names of objects whose settings somebody asked for, in their order.
  [[nodiscard]] const std::vector<std::string>& asked_for() const { return asked_for_; }

  [[nodiscard]] console::QtPropertySheet& sheet() const { return *result_.sheet; }
  /// What is said of tabs that could not be shown; empty when all of them are.
  [[nodiscard]] std::string Missing() const { return console::ToUtf8(result_.missing); }
  /// The dialog of the first page.
  [[nodiscard]] console::QtDialog& dialog() const { return *sheet().Dialog(0); }
  [[nodiscard]] contract::QtPlayer& user() { return *player_; }
  [[nodiscard]] pelora::testing::FakeChoosers& choosers() { return choosers_; }
  [[nodiscard]] bool IsOpen() const { return sheet().isVisible(); }
  [[nodiscard]] bool IsApplyEnabled() const;
  [[nodiscard]] bool IsOkEnabled() const;
  /// What the line below the pages says.
  [[nodiscard]] std::string Said() const;
  /// Waits until the directory has answered everything that it was asked beside the window.
  void AwaitAnswers();
  [[nodiscard]] console::SheetFields& fields() const { return *result_.fields; }
  void ClickOk();
  void ClickCancel();
  void ClickApply();
  /// How many components use the library.
  [[nodiscard]] std::ptrdiff_t components() const { return platform_.component_library().users(); }
  /// Destroys the sheet.
  void Destroy();

 private:
  console::QtMessageBox message_box_;
  pelora::testing::FakeChoosers choosers_;
  console::ConsolePlatform platform_;
  resources::ResourceFile templates_;
  std::vector<std::string> asked_for_;
  console::SheetResult result_;
  std::optional<contract::QtPlayer> player_;
};

/// What a message box shows: caption, text, and the error icon or not.
struct ShownBox {
  std::string caption;
  std::string text;
  QMessageBox::Icon icon = QMessageBox::NoIcon;
};

/// Takes down what a message box shows and closes it by its only button.
[[nodiscard]] contract::ModalScript Confirm(ShownBox& shown);
/// Answers a question by the button of this text.
[[nodiscard]] contract::ModalScript Press(const char* button);

}  // namespace pelora::test
