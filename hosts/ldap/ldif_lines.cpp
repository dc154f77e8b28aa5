// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/ldif_lines.h"

#include <algorithm>

namespace pelora::ldap {
namespace {

constexpr std::string_view kBase64Digits =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::string_view kNameLetters =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-.;@";

/// Takes the first line off, without its end.
std::string_view TakeLine(std::string_view& text) {
  const std::size_t end = std::min(text.find('\n'), text.size());
  std::string_view line = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

bool IsBase64(std::string_view text) {
  if (text.size() % 4 != 0) return false;
  const std::string_view rest =
      text.substr(std::min(text.find_first_not_of(kBase64Digits), text.size()));
  return rest.empty() || rest == "=" || rest == "==";
}

}  // namespace

std::vector<LdifBlock> SplitLdif(std::string_view text) {
  std::vector<LdifBlock> blocks;
  bool is_inside = false;
  bool is_comment = false;
  for (std::size_t number = 1; !text.empty(); ++number) {
    const std::string_view line = TakeLine(text);
    const bool goes_on = line.starts_with(' ') && (is_inside || is_comment);
    if (goes_on && is_comment) continue;
    is_comment = line.starts_with('#');
    if (goes_on) {
      blocks.back().lines.back() += line.substr(1);
    } else if (line.empty()) {
      is_inside = false;
    } else if (is_comment) {
      if (is_inside) blocks.back().comments.emplace_back(line.substr(1));
    } else {
      if (!is_inside) blocks.push_back({.line = number, .lines = {}});
      blocks.back().lines.emplace_back(line);
      is_inside = true;
    }
  }
  return blocks;
}

bool IsLdifValue(std::string_view line) {
  const std::size_t name = line.find_first_not_of(kNameLetters);
  if (name == std::string_view::npos || name == 0 || line[name] != ':') return false;
  // A zero would end the text for the reader.
  if (line.find('\0') != std::string_view::npos) return false;
  std::string_view value = line.substr(name + 1);
  if (value.starts_with('<')) return false;
  if (!value.starts_with(':')) return true;
  value.remove_prefix(std::min(value.find_first_not_of(' ', 1), value.size()));
  return IsBase64(value);
}

}  // namespace pelora::ldap
