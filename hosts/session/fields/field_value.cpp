// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/fields/field_value.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "directory/ascii_case.h"
#include "hosts/ldap/entry_values.h"
#include "hosts/session/fields/list_text.h"
#include "hosts/session/visible_text.h"

namespace pelora::session {
namespace {

constexpr std::string_view kYes = "yes";
constexpr std::string_view kNo = "no";

struct FlagWord {
  std::string_view word;
  bool flag;
};
constexpr std::array<FlagWord, 8> kFlagWords = {{{kYes, true},
                                                 {kNo, false},
                                                 {"true", true},
                                                 {"false", false},
                                                 {"on", true},
                                                 {"off", false},
                                                 {"1", true},
                                                 {"0", false}}};

/// A stored integer; none for a text that is none.
std::optional<std::int64_t> StoredNumber(const std::string* text) {
  if (text == nullptr) return std::nullopt;
  std::int64_t number = 0;
  const char* end = text->data() + text->size();
  const auto [stopped, error] = std::from_chars(text->data(), end, number);
  if (error != std::errc() || stopped != end) return std::nullopt;
  return number;
}

bool StoredFlag(const std::string* text) {
  if (text == nullptr) return false;
  return StoredNumber(text).value_or(0) != 0;
}

std::vector<std::string> StoredList(const ldap::Entry& entry, std::string_view attribute) {
  std::vector<std::string> values = ldap::ValuesOf(entry, attribute);
  std::erase_if(values, &IsHiddenName);
  return values;
}

}  // namespace

bool IsHiddenName(const std::string& name) {
  constexpr std::string_view kDeletedMark = "\\0ADEL:";
  return name.find(kDeletedMark) != std::string::npos;
}

FieldValue ReadField(const Field& field, const ldap::Entry& entry, IADs& object) {
  const std::string_view attribute = field.row.attributes.front();
  const ldap::AttributeValues& stored = ldap::ValuesOf(entry, attribute);
  const std::string* const first = stored.empty() ? nullptr : &stored.front();
  switch (field.row.kind) {
    case FieldKind::kFlag:
      return StoredFlag(first);
    case FieldKind::kNumber:
      if (const auto number = StoredNumber(first); number) return *number;
      return {};
    case FieldKind::kList:
    case FieldKind::kNameList:
      return StoredList(entry, attribute);
    case FieldKind::kChoice:
      if (const auto choice = field.row.choice_of(object); choice) {
        return ChoiceWord(field.row.choices.at(*choice));
      }
      return {};
    case FieldKind::kText:
    case FieldKind::kName:
    case FieldKind::kServer:
    case FieldKind::kDefaultEntry:
      break;
  }
  if (first == nullptr) return {};
  return *first;
}

std::string PrintedText(const FieldValue& value) {
  if (const auto* flag = std::get_if<bool>(&value)) return std::string(*flag ? kYes : kNo);
  if (const auto* number = std::get_if<std::int64_t>(&value)) return std::to_string(*number);
  if (const auto* text = std::get_if<std::string>(&value)) return ValidText(*text);
  if (std::holds_alternative<std::vector<std::string>>(value)) return JoinList(PrintedLines(value));
  return {};
}

std::vector<std::string> PrintedLines(const FieldValue& value) {
  if (const auto* list = std::get_if<std::vector<std::string>>(&value)) {
    std::vector<std::string> lines = *list;
    std::ranges::transform(lines, lines.begin(), &ValidText);
    return lines;
  }
  if (std::holds_alternative<std::monostate>(value)) return {};
  return {PrintedText(value)};
}

std::string ChoiceWord(std::string_view text) {
  std::string word(text);
  std::ranges::replace(word, ' ', '-');
  return word;
}

std::optional<std::size_t> ChoiceOfWord(const Field& field, std::string_view word) {
  const std::string wanted = ChoiceWord(word);
  for (std::size_t choice = 0; choice < field.row.choices.size(); ++choice) {
    if (EqualsWithoutCase(ChoiceWord(field.row.choices[choice]), wanted)) return choice;
  }
  return std::nullopt;
}

std::optional<bool> FlagOfWord(std::string_view word) {
  const auto found = std::ranges::find_if(
      kFlagWords, [word](const FlagWord& known) { return EqualsWithoutCase(known.word, word); });
  return found == kFlagWords.end() ? std::nullopt : std::optional(found->flag);
}

}  // namespace pelora::session
