// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTreeView>
#include <QWidget>
#include <string>
#include <vector>

namespace pelora::test {

/// The person in front of one of the console's choosers.
class ChooserUser {
 public:
  explicit ChooserUser(QWidget& window) : window_(window) {}

  [[nodiscard]] std::string Title() const;
  [[nodiscard]] QLineEdit& Text() const;
  [[nodiscard]] QComboBox& Places() const;
  [[nodiscard]] QTreeView& Results() const;
  [[nodiscard]] QListWidget& Chosen() const;
  [[nodiscard]] QTreeView& Tree() const;
  [[nodiscard]] std::string Status() const;
  [[nodiscard]] Qt::TextFormat StatusFormat() const;
  /// A button by its text, without the mark of its mnemonic.
  [[nodiscard]] QPushButton& Button(const char* text) const;

  /// Types over the text.
  void Type(const char* text);
  /// Presses one key where the focus is.
  void Press(Qt::Key key);
  /// Waits until the search has ended.
  void WaitForSearch();
  /// Waits until there are several places to look in; their names.
  [[nodiscard]] std::vector<std::string> WaitForPlaces();
  /// Goes to the next or an earlier place by the keyboard, and waits until the search has ended.
  void LookIn(int place);
  /// Types over the text and waits until everything has been found.
  void Search(const char* text);

  /// A column of what was found, as shown.
  [[nodiscard]] std::vector<std::string> Column(int column) const;
  [[nodiscard]] std::vector<std::string> Names() const { return Column(0); }
  [[nodiscard]] std::vector<std::string> ChosenNames() const;
  /// Clicks the row of a name; with `key` held.
  void ClickRow(const char* name, Qt::KeyboardModifiers key = Qt::NoModifier);
  /// Double clicks the row of a name.
  void DoubleClickRow(const char* name);
  void Click(const char* button);

  /// Opens the containers on the way and makes the last one the chosen one; names from the base's
  /// children down.
  void GoToContainer(const std::vector<const char*>& way);

 private:
  [[nodiscard]] QLabel& StatusLine() const;
  template <class Widget>
  [[nodiscard]] Widget& Find(const char* name) const;
  [[nodiscard]] QModelIndex RowOf(const char* name) const;

  QWidget& window_;
};

}  // namespace pelora::test
