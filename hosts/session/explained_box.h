// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "platform/message_box.h"

namespace pelora::session {

/// Forwards to a message box, and has an error go on with what else is known of it: a code alone
/// helps nobody.
class ExplainedBox final : public IMessageBox {
 public:
  /// `box` outlives it. `explain` is asked with every error; empty: nothing more is known.
  ExplainedBox(IMessageBox& box, std::function<std::string()> explain)
      : box_(box), explain_(std::move(explain)) {}

  std::int32_t Show(IDialog* owner, const Message& message) override {
    if (message.icon != MessageIcon::kError) return box_.Show(owner, message);
    Message told = message;
    if (const std::string words = explain_(); !words.empty()) told.text += "\r\n\r\n" + words;
    return box_.Show(owner, told);
  }

 private:
  IMessageBox& box_;
  std::function<std::string()> explain_;
};

}  // namespace pelora::session
