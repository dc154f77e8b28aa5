// SPDX-License-Identifier: Apache-2.0
#include "tests/lab/message_count.h"

#include <algorithm>

namespace pelora::lab {
namespace {

/// The first byte of a message that is not sealed. A sealed one begins with its length, which is
/// never as large as that.
constexpr unsigned char kPlain = 0x30;
constexpr unsigned char kLongLength = 0x80;
constexpr std::size_t kLengthOfSealed = 4;

}  // namespace

void MessageCount::TakeHead(unsigned char byte) {
  if (head_++ == 0) {
    ++messages_;
    length_ = 0;
    if (byte == kPlain) return;
    length_bytes_ = kLengthOfSealed;
  } else if (head_ == 2 && length_bytes_ == 0) {
    // The length itself, or how many bytes say it.
    length_bytes_ = byte & kLongLength ? byte & ~kLongLength : 0U;
    length_ = length_bytes_ == 0 ? byte : 0U;
    if (length_bytes_ == 0) {
      left_ = length_;
      head_ = 0;
    }
    return;
  }
  length_ = length_ << 8U | byte;
  if (--length_bytes_ == 0) {
    left_ = length_;
    head_ = 0;
  }
}

void MessageCount::Take(std::string_view bytes) {
  bytes_ += bytes.size();
  while (!bytes.empty()) {
    if (left_ > 0) {
      const std::size_t count = std::min(left_, bytes.size());
      left_ -= count;
      bytes.remove_prefix(count);
    } else {
      TakeHead(static_cast<unsigned char>(bytes.front()));
      bytes.remove_prefix(1);
    }
  }
}

}  // namespace pelora::lab
