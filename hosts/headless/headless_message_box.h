// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <deque>
#include <vector>

#include "platform/dialog_controller.h"
#include "platform/message_box.h"

namespace pelora {

/// Keeps the messages that would have been shown. Answers are queued beforehand; without one a
/// message is answered with the button that does the least: OK, or No to a question.
class HeadlessMessageBox final : public IMessageBox {
 public:
  struct Record {
    Message message;
    IDialog* owner = nullptr;
    std::int32_t answer = 0;
  };

  /// Queues the answer to the next message.
  void AnswerNext(std::int32_t answer) { answers_.push_back(answer); }
  [[nodiscard]] std::size_t AnswersLeft() const { return answers_.size(); }
  [[nodiscard]] const std::vector<Record>& records() const { return records_; }
  void ClearRecords() { records_.clear(); }
  /// Whether one of them told of an error, and not of less.
  [[nodiscard]] bool HasToldOfError() const;

  std::int32_t Show(IDialog* owner, const Message& message) override;

 private:
  std::deque<std::int32_t> answers_;
  std::vector<Record> records_;
};

}  // namespace pelora
