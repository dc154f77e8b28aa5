// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <iosfwd>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/dialog_controller.h"
#include "platform/message_box.h"
#include "tests/contract/dialog_player.h"
#include "tests/contract/tab_scripts.h"

namespace pelora::contract {

/// Values of attributes by the attributes' names, as text.
using TabValues = std::map<std::string, std::vector<std::string>>;

/// A message box. Its lines end with "\n", whatever they end with on the console.
struct TabBox {
  std::string caption;
  std::string text;

  friend bool operator==(const TabBox&, const TabBox&) = default;
};
void PrintTo(const TabBox& box, std::ostream* out);
/// A message as the box that it is shown in.
[[nodiscard]] TabBox ToTabBox(const Message& message);
/// A box of the extension that shows a failure with its code.
[[nodiscard]] TabBox ErrorBox(const std::string& text, const std::string& code = "0X80004005");

/// A console over the sample company, and the person in front of it; made anew for each test. What
/// is chosen or typed in windows of their own is said beforehand.
class TabConsole {
 public:
  /// Closes a sheet that is still open, asking nobody. A box that nobody took fails the test.
  virtual ~TabConsole() = default;

  /// Gives an object these values, and none of the attributes that have none here.
  virtual void Give(const std::string& name, const TabValues& values) = 0;

  /// Opens the property sheet of objects, by distinguished name, at the tab of a component class.
  virtual void Open(const std::string& component, const std::vector<std::string>& names) = 0;
  virtual void Close() = 0;
  /// The tab's dialog, for looking at it.
  [[nodiscard]] virtual IDialog& Page() = 0;
  [[nodiscard]] virtual DialogPlayer& User() = 0;

  virtual void Pick(const std::vector<std::string>& names) = 0;
  virtual void Find(const std::vector<std::string>& names) = 0;
  virtual void Browse(const std::string& name) = 0;
  /// The next window is a dialog, which is played by `script`.
  virtual void PlayNext(DialogScript script) = 0;
  /// The same for the dialog of an address: the address is replaced, and OK clicked.
  void TypeAddress(const std::string& address);
  /// The next window is a message box, which is answered with this button; `TakeBox` gives it.
  virtual void AwaitBox(std::int32_t answer = kDialogOk) = 0;
  /// The first box that has not been taken yet; an empty one when there is none.
  [[nodiscard]] virtual TabBox TakeBox() = 0;

  [[nodiscard]] virtual bool IsApplyEnabled() const = 0;
  virtual void ClickApply() = 0;
  virtual void ClickOk() = 0;
  [[nodiscard]] virtual bool IsOpen() const = 0;
  /// Whether what a page writes on every apply is written though nobody touched it.
  [[nodiscard]] virtual bool WritesUntouched() const { return true; }
  /// Whether the console itself judges what is typed, holds OK and Apply while it is wrong, and
  /// takes a field that is set back for unchanged.
  [[nodiscard]] virtual bool LooksAfterFields() const { return false; }

  /// The `nth` staging of an attribute, and the `nth` writing of an object, from now on fail for
  /// want of rights.
  virtual void FailPut(const std::string& attribute, std::size_t nth) = 0;
  virtual void FailCommit(std::size_t nth) = 0;

  // Asked of consoles that draw.

  /// What is wrong with how the tab looks, in words: controls that are cut off or overlap.
  [[nodiscard]] virtual std::vector<std::string> FaultsOfSight() { return {"nothing is seen"}; }
  /// Keeps a picture of the sheet.
  virtual void SavePicture(const std::string& /*name*/) {}

  /// The name that the company's objects stand below.
  [[nodiscard]] virtual std::string Base() const { return std::string(kSampleBase); }
  /// What the directory holds of the catalogue's attributes of an object, values in its order.
  [[nodiscard]] virtual TabValues Stored(const std::string& name) = 0;
  /// Whether the directory keeps the order in which an attribute's values were written.
  [[nodiscard]] virtual bool KeepsOrder() const { return true; }
};

using TabConsoleFactory = std::unique_ptr<TabConsole> (*)();

/// The texts of a list box, from top to bottom.
[[nodiscard]] std::vector<std::string> RowsOf(const IListBox& list);
/// The row of a text; the test fails when there is none.
[[nodiscard]] RowIndex RowOf(const IListBox& list, const std::string& text);

/// What the directory holds of an object, as lines: "name: value | value", in order of the names,
/// without attributes that have no value or are made up by the directory. Values are sorted where
/// the directory does not keep their order.
[[nodiscard]] std::vector<std::string> ToLines(const TabConsole& console, const TabValues& values);

}  // namespace pelora::contract
