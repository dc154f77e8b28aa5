// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>
#include <functional>
#include <string>

#include "hosts/session/attribute_editing.h"

class QComboBox;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace pelora::console {

class HintLabel;

/// How attributes of an object are edited. All of these are there, or none.
struct AttributeEditor {
  /// Why an attribute cannot be edited; empty when it can.
  std::function<std::string(const std::string& attribute)> why_read_only{};
  std::function<session::EditableAttribute(const std::string& attribute)> edited{};
  /// Attributes that the object does not have, and may.
  std::function<std::vector<std::string>()> settable{};
  /// Why values would not be taken; empty when they may be.
  std::function<std::string(const std::string& attribute, const ldap::AttributeValues& values)>
      why_not_taken{};
  /// False: something is not written, which has been told.
  std::function<bool(const session::EditableAttribute& seen, ldap::AttributeValues wanted)> write{};
};

/// Edits the values of one attribute as text: in a line for each value where there may be several.
/// It says what is wrong while it is typed, and stays open with it when it was not written.
class AttributeDialog final : public QDialog {
 public:
  /// `editor` outlives the dialog.
  AttributeDialog(session::EditableAttribute edited, const AttributeEditor& editor,
                  QWidget* parent);

  /// Writes what was typed, and closes when that is done.
  void accept() override;

 private:
  QWidget* MakeField();
  [[nodiscard]] std::string Typed() const;
  void OnTyped();

  session::EditableAttribute edited_;
  const AttributeEditor& editor_;
  // One of them, by the form of the values.
  QPlainTextEdit* text_ = nullptr;
  QLineEdit* number_ = nullptr;
  QComboBox* boolean_ = nullptr;
  HintLabel* hint_ = nullptr;
  QPushButton* write_ = nullptr;
};

}  // namespace pelora::console
