// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string_view>

namespace pelora::lab {

/// Counts the messages of one side of a conversation with a directory server, as its bytes come:
/// plain ones, which say by themselves how long they are, and sealed ones, which stand behind
/// their length. Programs seal each request by itself.
class MessageCount {
 public:
  void Take(std::string_view bytes);

  /// How many have begun.
  [[nodiscard]] std::size_t messages() const { return messages_; }
  [[nodiscard]] std::size_t bytes() const { return bytes_; }

 private:
  /// Takes a byte of the head of a message.
  void TakeHead(unsigned char byte);

  std::size_t messages_ = 0;
  std::size_t bytes_ = 0;
  /// Of the message that is under way: bytes of its head that were taken, and how many are to come
  /// of what says its length; the length as far as it is known; what is left of its body.
  std::size_t head_ = 0;
  std::size_t length_bytes_ = 0;
  std::size_t length_ = 0;
  std::size_t left_ = 0;
};

}  // namespace pelora::lab
