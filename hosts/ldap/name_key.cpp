// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/name_key.h"

#include <optional>

#include "hosts/ldap/case_fold.h"

namespace pelora::ldap {
namespace {

constexpr char kPartEnd = '\x01';
constexpr char kValueBegin = '\x02';
/// What follows is a character of the name, though it looks like a mark.
constexpr char kLiteral = '\x03';

bool LooksLikeAMark(char character) {
  return character == kPartEnd || character == kValueBegin || character == kLiteral;
}

std::optional<int> HexDigit(char character) {
  if (character >= '0' && character <= '9') return character - '0';
  if (character >= 'a' && character <= 'f') return character - 'a' + 10;
  if (character >= 'A' && character <= 'F') return character - 'A' + 10;
  return std::nullopt;
}

/// The character that an escape at the front of `text`, behind its backslash, stands for; what it
/// takes is removed.
char TakeEscaped(std::string_view& text) {
  if (text.size() >= 2) {
    const std::optional<int> high = HexDigit(text[0]);
    const std::optional<int> low = HexDigit(text[1]);
    if (high && low) {
      text.remove_prefix(2);
      return static_cast<char>(*high * 16 + *low);
    }
  }
  const char character = text.empty() ? '\\' : text.front();
  text.remove_prefix(text.empty() ? 0 : 1);
  return character;
}

bool IsBlank(char character) { return character == ' ' || character == '\t'; }

}  // namespace

std::string NameKey(std::string_view dn) {
  std::string key;
  // Where the name or the value begins that is being read.
  std::size_t begin = 0;
  // Up to here blanks are part of the value, since they were escaped or stand inside it.
  std::size_t kept = 0;
  const auto keep = [&](char character) {
    if (LooksLikeAMark(character)) key += kLiteral;
    key += character;
    kept = key.size();
  };
  bool is_value = false;
  while (!dn.empty()) {
    const char character = dn.front();
    dn.remove_prefix(1);
    if (character == '\\') {
      keep(TakeEscaped(dn));
    } else if (character == ',' || (character == '=' && !is_value)) {
      key.resize(kept);
      is_value = character == '=';
      key += is_value ? kValueBegin : kPartEnd;
      begin = kept = key.size();
    } else if (!IsBlank(character)) {
      keep(character);
    } else if (kept > begin) {
      key += character;
    }
  }
  key.resize(kept);
  return FoldCase(key);
}

bool LiesBelow(std::string_view key, std::string_view above) {
  return key.size() > above.size() && key.ends_with(above) &&
         key[key.size() - above.size() - 1] == kPartEnd;
}

}  // namespace pelora::ldap
