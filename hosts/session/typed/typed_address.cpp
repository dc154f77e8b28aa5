// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/typed/typed_address.h"

#include <algorithm>
#include <string>

#include "hosts/session/check/mail_address.h"

namespace pelora::session {
namespace {

bool IsBeyondAscii(char sign) { return static_cast<unsigned char>(sign) > 0x7F; }

/// The text with a letter for each byte beyond ASCII.
std::string InAscii(std::string_view text) {
  std::string plain(text);
  std::ranges::replace_if(plain, &IsBeyondAscii, 'x');
  return plain;
}

/// Why a text is no address, as the likeliest slip explains it.
std::string WhyWrong(std::string_view text) {
  const auto count = std::ranges::count(text, '@');
  if (count == 0) return "An address has an \"@\": name@example.org.";
  if (text.find_first_of(" \t") != std::string_view::npos) return "An address has no blanks.";
  if (count > 1) return "An address has one \"@\" only.";
  if (text.front() == '@') return "Something stands before the \"@\" of an address.";
  if (text.back() == '@') return "A domain stands behind the \"@\" of an address.";
  if (text.find("..") != std::string_view::npos)
    return "No two dots follow each other in an address.";
  return "This is no e-mail address: name@example.org.";
}

/// Why an address seldom reaches anybody; empty when it may well do.
std::string WhyOdd(std::string_view address) {
  if (std::ranges::any_of(address, &IsBeyondAscii)) {
    return "Not every mail server takes letters beyond a to z.";
  }
  if (address.starts_with('"')) return "Quotation marks in an address: few programs take them.";
  const std::string_view domain = address.substr(address.rfind('@') + 1);
  if (domain.starts_with('[')) return "The address of a machine instead of a domain.";
  if (domain.find('.') == std::string_view::npos) {
    return "The domain has no dot: is it the whole of it?";
  }
  return {};
}

}  // namespace

Judgement JudgeAddress(std::string_view text) {
  if (text.empty()) return {};
  if (!IsMailAddress(InAscii(text))) {
    return {.verdict = Verdict::kWrong, .sentence = WhyWrong(text)};
  }
  std::string odd = WhyOdd(text);
  if (odd.empty()) return {};
  return {.verdict = Verdict::kOdd, .sentence = std::move(odd)};
}

}  // namespace pelora::session
