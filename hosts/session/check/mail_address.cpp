// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/check/mail_address.h"

#include <arpa/inet.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>

#include "directory/ascii_case.h"

namespace pelora::session {
namespace {

constexpr std::size_t kLongestLocalPart = 64;
constexpr std::size_t kLongestDomain = 255;
constexpr std::size_t kLongestLabel = 63;
constexpr std::size_t kLongestMailbox = 254;

bool IsLetterOrDigit(char sign) {
  const char lower = AsciiLowerCase(sign);
  return (lower >= 'a' && lower <= 'z') || (sign >= '0' && sign <= '9');
}

/// A sign of a word that stands without quotation marks.
bool IsWordSign(char sign) {
  constexpr std::string_view kSigns = "!#$%&'*+-/=?^_`{|}~";
  return IsLetterOrDigit(sign) || kSigns.find(sign) != std::string_view::npos;
}

bool IsPrintable(char sign) { return sign >= ' ' && sign <= '~'; }

/// Whether a text is parts divided by dots, none of them empty, that are all as `is_part` wants.
template <class Condition>
bool AreDottedParts(std::string_view text, Condition is_part) {
  while (true) {
    const std::size_t dot = text.find('.');
    const std::string_view part = text.substr(0, dot);
    if (part.empty() || !is_part(part)) return false;
    if (dot == std::string_view::npos) return true;
    text.remove_prefix(dot + 1);
  }
}

bool IsDottedWords(std::string_view text) {
  return AreDottedParts(
      text, [](std::string_view word) { return std::ranges::all_of(word, IsWordSign); });
}

/// How long the quoted text at the front is, with its marks; 0 when there is none.
std::size_t QuotedLength(std::string_view text) {
  if (!text.starts_with('"')) return 0;
  for (std::size_t place = 1; place < text.size(); ++place) {
    if (text[place] == '"') return place + 1;
    if (text[place] == '\\') ++place;
    if (place == text.size() || !IsPrintable(text[place])) return 0;
  }
  return 0;
}

bool IsLabel(std::string_view label) {
  const auto is_inner = [](char sign) { return IsLetterOrDigit(sign) || sign == '-'; };
  return label.size() <= kLongestLabel && std::ranges::all_of(label, is_inner) &&
         label.front() != '-' && label.back() != '-';
}

bool IsNetworkAddress(int family, std::string_view text) {
  // The system reads up to the first of them.
  if (text.find('\0') != std::string_view::npos) return false;
  std::array<unsigned char, sizeof(in6_addr)> bytes{};
  return inet_pton(family, std::string(text).c_str(), bytes.data()) == 1;
}

/// What stands between the brackets: an address of version 4, or one behind the tag of its kind.
bool IsAddressLiteral(std::string_view text) {
  const std::size_t colon = text.find(':');
  if (colon == std::string_view::npos) return IsNetworkAddress(AF_INET, text);
  const std::string_view tag = text.substr(0, colon);
  const std::string_view content = text.substr(colon + 1);
  if (EqualsWithoutCase(tag, "IPv6")) return IsNetworkAddress(AF_INET6, content);
  const auto is_content = [](char sign) {
    return sign > ' ' && sign <= '~' && sign != '[' && sign != '\\' && sign != ']';
  };
  const auto is_tag_sign = [](char sign) { return IsLetterOrDigit(sign) || sign == '-'; };
  return !tag.empty() && std::ranges::all_of(tag, is_tag_sign) && tag.back() != '-' &&
         !content.empty() && std::ranges::all_of(content, is_content);
}

bool IsDomain(std::string_view text) {
  if (text.size() > kLongestDomain) return false;
  if (text.starts_with('[')) {
    return text.ends_with(']') && IsAddressLiteral(text.substr(1, text.size() - 2));
  }
  return AreDottedParts(text, IsLabel);
}

}  // namespace

bool IsMailAddress(std::string_view text) {
  if (text.size() > kLongestMailbox) return false;
  const std::size_t quoted = QuotedLength(text);
  const std::size_t at = quoted != 0 ? quoted : text.find('@');
  if (at >= text.size() || text[at] != '@' || at > kLongestLocalPart) return false;
  return (quoted != 0 || IsDottedWords(text.substr(0, at))) && IsDomain(text.substr(at + 1));
}

}  // namespace pelora::session
