// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/check/search_query.h"

#include <algorithm>
#include <cstddef>

#include "directory/ascii_case.h"

namespace pelora::session {
namespace {

constexpr int kDeepest = 100;

bool IsDigit(char sign) { return sign >= '0' && sign <= '9'; }
bool IsLetter(char sign) {
  const char lower = AsciiLowerCase(sign);
  return lower >= 'a' && lower <= 'z';
}
bool IsHexDigit(char sign) {
  const char lower = AsciiLowerCase(sign);
  return IsDigit(sign) || (lower >= 'a' && lower <= 'f');
}
bool IsNameSign(char sign) { return IsLetter(sign) || IsDigit(sign) || sign == '-'; }

/// Cuts off what stands before the first `sign`, and the sign; the whole when there is none.
std::string_view TakeUpTo(char sign, std::string_view& text) {
  const std::size_t place = text.find(sign);
  const std::string_view part = text.substr(0, place);
  text = place == std::string_view::npos ? std::string_view() : text.substr(place + 1);
  return part;
}

/// An object identifier: numbers divided by dots, at least two, none with a leading zero.
bool IsNumericIdentifier(std::string_view text) {
  int numbers = 0;
  bool goes_on = true;
  while (goes_on) {
    goes_on = text.find('.') != std::string_view::npos;
    const std::string_view number = TakeUpTo('.', text);
    if (number.empty() || !std::ranges::all_of(number, IsDigit)) return false;
    if (number.size() > 1 && number.front() == '0') return false;
    ++numbers;
  }
  return numbers > 1;
}

/// The name or identifier of an attribute or matching rule.
bool IsIdentifier(std::string_view text) {
  if (text.empty()) return false;
  if (IsDigit(text.front())) return IsNumericIdentifier(text);
  return IsLetter(text.front()) && std::ranges::all_of(text, IsNameSign);
}

/// An attribute with its options.
bool IsAttribute(std::string_view text) {
  bool has_options = text.find(';') != std::string_view::npos;
  if (!IsIdentifier(TakeUpTo(';', text))) return false;
  while (has_options) {
    has_options = text.find(';') != std::string_view::npos;
    const std::string_view option = TakeUpTo(';', text);
    if (option.empty() || !std::ranges::all_of(option, IsNameSign)) return false;
  }
  return true;
}

/// What stands before the `:=` of an extensible match: attribute, `:dn` and matching rule, of which
/// attribute or rule is there.
bool IsExtensibleMatch(std::string_view text) {
  const bool has_more = text.find(':') != std::string_view::npos;
  const std::string_view attribute = TakeUpTo(':', text);
  if (!attribute.empty() && !IsAttribute(attribute)) return false;
  if (!has_more) return !attribute.empty();
  if (EqualsWithoutCase(text.substr(0, 2), "dn") && (text.size() == 2 || text[2] == ':')) {
    if (text.size() == 2) return !attribute.empty();
    text.remove_prefix(3);
  }
  return IsIdentifier(text);
}

/// Reads a text from its beginning on; each function takes what it names and says whether it was
/// there.
class QueryReader {
 public:
  explicit QueryReader(std::string_view text) : length_(text.size()), left_(text) {}

  [[nodiscard]] bool TakeAll() {
    return TakeFilter(0) && (left_.empty() || Fail("nothing may stand behind the filter"));
  }
  /// After something was not there.
  [[nodiscard]] QueryFault fault() const { return fault_; }

 private:
  /// Takes down what is wrong at the place that is reached; the first word counts.
  bool Fail(std::string_view reason) {
    if (fault_.reason.empty()) fault_ = {.place = length_ - left_.size(), .reason = reason};
    return false;
  }

  bool TakeFilter(int depth) {
    SkipBlanks();
    if (depth > kDeepest) return Fail("too many filters lie in one another");
    if (!Take('(')) return Fail("an opening parenthesis is missing");
    if (!TakeContent(depth)) return false;
    if (!Take(')')) return Fail("a closing parenthesis is missing");
    SkipBlanks();
    return true;
  }

  bool TakeContent(int depth) {
    SkipBlanks();
    if (Take('!')) return TakeFilter(depth + 1);
    if (!Take('&') && !Take('|')) return TakeItem();
    do {
      if (!TakeFilter(depth + 1)) return false;
    } while (left_.starts_with('('));
    return true;
  }

  bool TakeItem() {
    const std::size_t end = std::min(left_.find_first_of("()"), left_.size());
    const std::size_t equals = left_.find('=');
    if (equals == 0 || equals == std::string_view::npos || equals > end) {
      return Fail(end == 0 ? "a condition is missing" : "a condition is ATTRIBUTE=VALUE");
    }
    const std::string_view before = left_.substr(0, equals);
    const char sign = before.back();
    const std::string_view shorter = before.substr(0, before.size() - 1);
    const bool is_extensible = sign == ':';
    const bool is_compared = sign == '~' || sign == '<' || sign == '>';
    const bool is_named =
        is_extensible ? IsExtensibleMatch(shorter) : IsAttribute(is_compared ? shorter : before);
    if (!is_named) return Fail("this is no name of an attribute");
    left_.remove_prefix(equals + 1);
    return TakeValue(!is_extensible && !is_compared);
  }

  /// A value up to the closing parenthesis, which stays.
  bool TakeValue(bool may_have_asterisks) {
    while (!left_.empty() && left_.front() != ')') {
      const char sign = left_.front();
      if (sign == '(' || sign == '\0') return Fail("in a value this is written \\28 or \\00");
      if (sign == '*' && !may_have_asterisks) return Fail("in this value a star is written \\2a");
      if (sign == '\\' && (left_.size() < 3 || !IsHexDigit(left_[1]) || !IsHexDigit(left_[2]))) {
        return Fail("two hexadecimal digits follow a backslash");
      }
      left_.remove_prefix(sign == '\\' ? 3 : 1);
    }
    return true;
  }

  bool Take(char sign) {
    if (!left_.starts_with(sign)) return false;
    left_.remove_prefix(1);
    return true;
  }

  void SkipBlanks() {
    left_.remove_prefix(std::min(left_.find_first_not_of(" \t\r\n"), left_.size()));
  }

  std::size_t length_;
  std::string_view left_;
  QueryFault fault_;
};

}  // namespace

bool IsSearchQuery(std::string_view text) { return QueryReader(text).TakeAll(); }

std::optional<QueryFault> FindQueryFault(std::string_view text) {
  QueryReader reader(text);
  if (reader.TakeAll()) return std::nullopt;
  return reader.fault();
}

}  // namespace pelora::session
