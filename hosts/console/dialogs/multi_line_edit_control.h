// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPlainTextEdit>

#include "hosts/console/dialogs/dialog_control.h"

namespace pelora::console {

/// An edit field of several lines, which are divided by "\r\n". Every change of its text is
/// reported. The tab key leaves it.
class MultiLineEditControl final : public DialogControl {
 public:
  MultiLineEditControl(const resources::DialogItem& item, QWidget& parent, ControlEvents& events);

  [[nodiscard]] std::string Text() const override;
  void SetText(std::string_view text) override;
  [[nodiscard]] Stretching stretching() const override {
    return {.across = Growth::kGrows, .down = Growth::kGrows};
  }

 private:
  QPlainTextEdit& edit_;
};

}  // namespace pelora::console
