// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/text.h"

#include <algorithm>
#include <iterator>

#include "directory/utf.h"

namespace pelora::session {
namespace {

bool IsBlank(char16_t unit) {
  constexpr std::u16string_view kOthers = u"\u0085\u00A0\u1680\u2028\u2029\u202F\u205F\u3000";
  return (unit >= u'\t' && unit <= u'\r') || unit == u' ' ||
         (unit >= u'\u2000' && unit <= u'\u200A') || kOthers.find(unit) != kOthers.npos;
}

}  // namespace

std::string Trimmed(std::string_view text) {
  const std::u16string units = ToUtf16(text);
  const auto first = std::ranges::find_if_not(units, &IsBlank);
  const auto last = std::find_if_not(units.rbegin(), std::make_reverse_iterator(first), &IsBlank);
  return ToUtf8(std::u16string_view(first, last.base()));
}

std::size_t CharacterCount(std::string_view text) { return ToUtf16(text).size(); }

}  // namespace pelora::session
