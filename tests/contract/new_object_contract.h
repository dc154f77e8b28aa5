// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "resources/resource.h"
#include "tests/contract/tab_console.h"
#include "tests/support/sample_objects.h"

// What the extensions of new-object wizards do on every console, from the page to the object in the
// directory:
//
//   INSTANTIATE_TEST_SUITE_P(Headless, NewObjectContract, ::testing::Values(&MakeHeadlessWizards));

namespace pelora::contract {

/// A console that makes objects, and the person in front of its wizard; made anew for each test.
class NewObjectConsole {
 public:
  /// Closes a wizard that is still open. A box that nobody took fails the test.
  virtual ~NewObjectConsole() = default;

  /// Shows the wizard of a class of objects, by its LDAP display name, at its first page.
  virtual void Open(const std::string& class_name) = 0;
  /// Names the object on the console's own first page.
  virtual void SetName(const std::string& name) = 0;
  /// The dialog of the page that shows, which is an extension's.
  [[nodiscard]] virtual IDialog& Page() = 0;
  [[nodiscard]] virtual DialogPlayer& User() = 0;

  [[nodiscard]] virtual bool IsNextEnabled() const = 0;
  virtual void Next() = 0;
  virtual void Back() = 0;
  /// On the last page only.
  virtual void Finish() = 0;
  [[nodiscard]] virtual bool IsOpen() const = 0;
  /// What the extensions say of the object, on the last page.
  [[nodiscard]] virtual std::string Summary() = 0;

  /// Objects of the sample company are chosen in the next object picker, container browser.
  virtual void Pick(const std::string& name) = 0;
  virtual void Browse(const std::string& name) = 0;
  /// The next window is a message box, which is confirmed; `TakeBox` gives it.
  virtual void AwaitBox() = 0;
  [[nodiscard]] virtual TabBox TakeBox() = 0;

  /// The next commit fails for want of rights.
  virtual void FailCommit() = 0;
  /// What the directory holds of the catalogue's attributes of the object made under a name; none:
  /// there is no such object.
  [[nodiscard]] virtual std::optional<TabValues> Stored(const std::string& name) = 0;
  /// The name that the company's objects stand below.
  [[nodiscard]] virtual std::string Base() const { return std::string(kSampleBase); }
};

using NewObjectConsoleFactory = std::unique_ptr<NewObjectConsole> (*)();

class NewObjectContract : public ::testing::TestWithParam<NewObjectConsoleFactory> {
 protected:
  using Lines = std::vector<std::string>;

  [[nodiscard]] NewObjectConsole& Console() { return *console_; }
  [[nodiscard]] IDialog& Page() { return console_->Page(); }
  [[nodiscard]] DialogPlayer& User() { return console_->User(); }
  [[nodiscard]] std::string Here(const char* sample) { return Rebased(sample, console_->Base()); }

  /// Shows the wizard of a class, names the object and goes on to the page with its settings.
  void Open(const std::string& class_name, const std::string& name);
  /// Names the object on the page that shows, in place of an earlier name, and goes on.
  void Name(const std::string& name);
  /// From the page with the settings to the end.
  void Finish();
  /// The settings of the object of the wizard, each a line "name: value"; "none" where there is no
  /// such object.
  [[nodiscard]] Lines Stored(const std::string& name);
  /// Ends the wizard, which has to succeed, and tells what was made.
  [[nodiscard]] Lines Made();

 private:
  std::unique_ptr<NewObjectConsole> console_ = GetParam()();
  std::string class_name_;
  std::string name_;
};

}  // namespace pelora::contract
