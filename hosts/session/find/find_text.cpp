// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/find/find_text.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

#include "directory/ascii_case.h"
#include "hosts/ldap/case_fold.h"
#include "hosts/ldap/entry_values.h"
#include "hosts/ldap/name_key.h"
#include "hosts/session/distinguished_name.h"
#include "hosts/session/search_filter.h"
#include "hosts/session/text.h"

namespace pelora::session {
namespace {

/// What objects are called; in a description only words are looked for.
constexpr std::array<std::string_view, 6> kNames = {
    "name", "displayName", "sAMAccountName", "userPrincipalName", "mail", "otherMailbox"};
constexpr std::string_view kDescription = "description";

/// Divides a text at signs that stand neither in quotation marks nor in angle brackets nor behind a
/// backslash. A line break ends both.
std::vector<std::string_view> DividedAt(std::string_view signs, std::string_view text) {
  std::vector<std::string_view> pieces;
  std::size_t begin = 0;
  bool is_quoted = false;
  bool is_in_brackets = false;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const char sign = text[at];
    if (sign == '\n' || sign == '\r') is_quoted = is_in_brackets = false;
    if (sign == '"') is_quoted = !is_quoted;
    if (sign == '<') is_in_brackets = true;
    if (sign == '>') is_in_brackets = false;
    if (sign == '\\') {
      ++at;
    } else if (!is_quoted && !is_in_brackets && signs.find(sign) != signs.npos) {
      pieces.push_back(text.substr(begin, at - begin));
      begin = at + 1;
    }
  }
  pieces.push_back(text.substr(std::min(begin, text.size())));
  return pieces;
}

/// An item without what mail programs put around it: the address of `"Ada" <ada@example.org>`, and
/// what stands in quotation marks.
std::string Unwrapped(std::string_view given) {
  std::string text = Trimmed(given);
  const std::size_t open = text.rfind('<');
  if (open != std::string::npos && text.ends_with('>')) {
    text = Trimmed(std::string_view(text).substr(open + 1, text.size() - open - 2));
  }
  if (text.size() > 1 && text.front() == '"' && text.back() == '"') {
    text = Trimmed(std::string_view(text).substr(1, text.size() - 2));
  }
  constexpr std::string_view kMailTo = "mailto:";
  if (EqualsWithoutCase(text.substr(0, kMailTo.size()), kMailTo)) text.erase(0, kMailTo.size());
  return text;
}

std::vector<std::string> WordsOf(std::string_view line) {
  std::vector<std::string> words;
  for (const std::string_view word : DividedAt(" \t", line)) {
    std::string text = Unwrapped(word);
    words.push_back(std::move(text));
  }
  return words;
}

}  // namespace

FindText::FindText(std::string_view text) {
  std::vector<std::string_view> pieces = DividedAt("\n\r;", text);
  std::erase_if(pieces, [](std::string_view piece) { return Trimmed(piece).empty(); });
  if (pieces.empty()) return;
  // Commas with nothing on one side divide nothing: they are part of a name that is still typed.
  std::vector<std::string_view> parts = DividedAt(",", pieces.front());
  std::erase_if(parts, [](std::string_view part) { return Trimmed(part).empty(); });
  const std::string only = Trimmed(parts.size() == 1 ? parts.front() : pieces.front());
  if (pieces.size() == 1 && parts.size() == 1 && !IsDistinguishedName(only)) {
    // A person's name and address is the address, not words that all have to be there.
    const std::string unwrapped = Unwrapped(only);
    words_ = only.ends_with('>') ? std::vector{unwrapped} : WordsOf(only);
    std::erase(words_, std::string());
    // Whatever it is, it is not everything.
    if (words_.empty()) words_.emplace_back(pieces.front());
    return;
  }
  TakeList(pieces);
}

void FindText::TakeList(const std::vector<std::string_view>& pieces) {
  for (const std::string_view piece : pieces) TakePieces(piece);
  std::set<std::string> known;
  std::erase_if(items_, [&known](const Item& item) {
    const std::string key =
        item.is_dn ? "=" + ldap::NameKey(item.given) : ldap::FoldCase(item.given);
    return !known.insert(key).second;
  });
  if (items_.size() <= kMostItems) return;
  left_out_ = items_.size() - kMostItems;
  items_.resize(kMostItems);
}

void FindText::TakePieces(std::string_view piece) {
  const std::string whole = Trimmed(piece);
  if (IsDistinguishedName(whole)) {
    items_.push_back({.given = whole, .is_dn = true});
    return;
  }
  std::vector<std::string> parts;
  for (const std::string_view part : DividedAt(",", whole)) {
    std::string text = Unwrapped(part);
    if (!text.empty()) parts.push_back(std::move(text));
  }
  std::vector<std::string> as_one;
  const bool may_be_one = parts.size() == 2 && whole.find('@') == std::string::npos;
  if (may_be_one) {
    as_one = {parts[0] + ", " + parts[1], parts[1] + " " + parts[0]};
  }
  for (const std::string& part : parts) TakeItem(part, as_one);
}

void FindText::TakeItem(std::string_view text, std::vector<std::string> other_names) {
  Item item{.given = std::string(text)};
  item.names.emplace_back(text);
  for (std::string& name : other_names) item.names.push_back(std::move(name));
  items_.push_back(std::move(item));
}

const std::vector<std::string>& FindAttributes() {
  static const std::vector<std::string> kAttributes = [] {
    std::vector<std::string> attributes(kNames.begin(), kNames.end());
    attributes.emplace_back(kDescription);
    return attributes;
  }();
  return kAttributes;
}

std::string FilterOfWords(const std::vector<std::string>& words) {
  std::string all;
  for (const std::string& word : words) {
    const std::string pattern = "=*" + EscapeFilterValue(word) + "*)";
    all += "(|";
    for (const std::string& attribute : FindAttributes()) all += "(" + (attribute + pattern);
    all += ")";
  }
  return words.size() > 1 ? "(&" + all + ")" : all;
}

std::string FilterOfNames(const FindText::Item& item) {
  std::string filters;
  for (const std::string& name : item.names) {
    const std::string value = "=" + EscapeFilterValue(name) + ")";
    for (const std::string_view attribute : kNames) filters += "(" + std::string(attribute) + value;
  }
  return filters;
}

std::vector<std::string> NamesOf(const ldap::Entry& entry) {
  std::set<std::string> names;
  for (const std::string_view attribute : kNames) {
    for (const std::string& value : ldap::ValuesOf(entry, attribute)) {
      names.insert(ldap::FoldCase(value));
    }
  }
  return {names.begin(), names.end()};
}

}  // namespace pelora::session
