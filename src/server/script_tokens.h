// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace pelora {

/// A piece of a registration script.
struct ScriptToken {
  enum class Kind : std::uint8_t { kEnd, kOpen, kClose, kEquals, kWord, kQuoted };

  Kind kind = Kind::kEnd;
  /// Of a word or quoted text, quotes undone.
  std::string text;
};

/// Takes a registration script apart into words, quoted texts and the signs `{`, `}` and `=`.
///
/// Reading stops at the first failure: from then on only the end is read, so that a reader built on
/// it may go on as if the script ended there and look at `error` last.
class ScriptTokens {
 public:
  /// Views `script`, which outlives it.
  explicit ScriptTokens(std::string_view script);

  [[nodiscard]] bool NextIs(ScriptToken::Kind kind) const { return next_.kind == kind; }
  /// Whether a word (without quotes) follows; compared without case.
  [[nodiscard]] bool NextIsWord(std::string_view word) const;
  [[nodiscard]] const ScriptToken& Next() const { return next_; }
  ScriptToken Take();

  /// Stops the reading. The first reason counts.
  void Fail(std::string_view reason);
  [[nodiscard]] bool HasFailed() const { return !error_.empty(); }
  /// The reason with its line; empty when nothing failed.
  [[nodiscard]] const std::string& error() const { return error_; }

 private:
  void Advance();
  void SkipBlanks();
  void ReadSign(ScriptToken::Kind kind);
  void ReadQuoted();
  void ReadWord();

  std::string_view rest_;
  std::size_t line_ = 1;
  ScriptToken next_;
  std::string error_;
};

}  // namespace pelora
