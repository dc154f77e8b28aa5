// SPDX-License-Identifier: Apache-2.0
#include "server/script_tokens.h"

#include <algorithm>
#include <utility>

#include "directory/ascii_case.h"

namespace pelora {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::string_view kEndOfWord = " \t\r\n{}='";

}  // namespace

ScriptTokens::ScriptTokens(std::string_view script) : rest_(script) { Advance(); }

bool ScriptTokens::NextIsWord(std::string_view word) const {
  return NextIs(ScriptToken::Kind::kWord) && EqualsWithoutCase(next_.text, word);
}

ScriptToken ScriptTokens::Take() {
  ScriptToken taken = std::move(next_);
  Advance();
  return taken;
}

void ScriptTokens::Fail(std::string_view reason) {
  if (HasFailed()) return;
  error_ = "line " + std::to_string(line_) + ": " + std::string(reason);
  rest_ = {};
  next_ = {};
}

void ScriptTokens::Advance() {
  SkipBlanks();
  next_ = {};
  if (rest_.empty()) return;
  switch (rest_.front()) {
    case '{':
      return ReadSign(ScriptToken::Kind::kOpen);
    case '}':
      return ReadSign(ScriptToken::Kind::kClose);
    case '=':
      return ReadSign(ScriptToken::Kind::kEquals);
    case '\'':
      return ReadQuoted();
    default:
      return ReadWord();
  }
}

void ScriptTokens::SkipBlanks() {
  const std::size_t count = std::min(rest_.find_first_not_of(kBlanks), rest_.size());
  line_ += static_cast<std::size_t>(std::ranges::count(rest_.substr(0, count), '\n'));
  rest_.remove_prefix(count);
}

void ScriptTokens::ReadSign(ScriptToken::Kind kind) {
  next_.kind = kind;
  rest_.remove_prefix(1);
}

void ScriptTokens::ReadQuoted() {
  next_.kind = ScriptToken::Kind::kQuoted;
  do {
    rest_.remove_prefix(1);
    const std::size_t quote = rest_.find('\'');
    if (quote == std::string_view::npos) return Fail("a quoted text does not end");
    next_.text += rest_.substr(0, quote);
    rest_.remove_prefix(quote + 1);
    if (rest_.starts_with('\'')) next_.text += '\'';
  } while (rest_.starts_with('\''));
}

void ScriptTokens::ReadWord() {
  next_.kind = ScriptToken::Kind::kWord;
  const std::size_t length = std::min(rest_.find_first_of(kEndOfWord), rest_.size());
  next_.text = rest_.substr(0, length);
  rest_.remove_prefix(length);
}

}  // namespace pelora
