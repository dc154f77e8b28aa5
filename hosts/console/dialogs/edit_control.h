// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLineEdit>
#include <QValidator>

#include "hosts/console/dialogs/dialog_control.h"

namespace pelora::console {

/// Refuses edits that bring in anything but digits. A text that a program put in may hold other
/// characters; they may be deleted, but none added.
class DigitsValidator final : public QValidator {
 public:
  using QValidator::QValidator;

  State validate(QString& input, int& position) const override;
  /// Says which text stands in the field now.
  void Accept(const QString& text);

 private:
  qsizetype other_characters_ = 0;
};

/// A one-line edit field. Every change of its text is reported.
class EditControl final : public DialogControl {
 public:
  EditControl(const resources::DialogItem& item, QWidget& parent, ControlEvents& events);

  [[nodiscard]] std::string Text() const override;
  void SetText(std::string_view text) override;
  [[nodiscard]] int ClientWidth() const override;
  [[nodiscard]] QSize NeededSize() const override;
  /// There are never many digits.
  [[nodiscard]] Stretching stretching() const override {
    return {.across = digits_ != nullptr ? Growth::kNone : Growth::kGrows};
  }

 private:
  void Changed();

  QLineEdit& edit_;
  DigitsValidator* digits_ = nullptr;
};

}  // namespace pelora::console
