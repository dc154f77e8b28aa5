// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <iosfwd>

#include "platform/message_box.h"

namespace pelora::console {

/// Writes messages to a stream where nobody stands in front of a screen. Questions are answered
/// with no.
class StreamMessageBox final : public IMessageBox {
 public:
  /// `stream` outlives the object.
  explicit StreamMessageBox(std::ostream& stream) : stream_(stream) {}

  std::int32_t Show(IDialog* owner, const Message& message) override;
  [[nodiscard]] bool has_shown() const { return has_shown_; }

 private:
  std::ostream& stream_;
  bool has_shown_ = false;
};

}  // namespace pelora::console
