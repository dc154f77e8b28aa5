// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace pelora::ctl {

/// What the program writes to one of its open files. A reader that has gone away ends the writing
/// quietly and nothing else; any other failure ends it as well and is kept.
///
/// Nothing is translated: text is UTF-8 whatever the locale.
class Output {
 public:
  /// The descriptor stays the caller's.
  explicit Output(int descriptor);
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;
  /// Writes what is left.
  ~Output() { Flush(); }

  [[nodiscard]] bool is_terminal() const { return is_terminal_; }
  /// Keeps the text until there is enough of it to be written at once.
  void Write(std::string_view text);
  /// The same with a line end behind it. Bytes that are no UTF-8 become visible, and on a terminal
  /// control characters too.
  void WriteLine(std::string_view text);
  void Flush();
  /// Why the writing ended, as the system says it; empty while it goes on, and when the reader has
  /// gone away.
  [[nodiscard]] const std::string& failure() const { return failure_; }

 private:
  int descriptor_;
  bool is_terminal_;
  bool is_over_ = false;
  std::string waiting_;
  std::string failure_;
};

}  // namespace pelora::ctl
