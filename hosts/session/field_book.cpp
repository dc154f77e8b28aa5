// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/field_book.h"

#include <algorithm>

#include "hosts/resources/field_label.h"
#include "hosts/session/utf8_check.h"

namespace pelora::session {
namespace {

std::string TextOfOne(const std::string& value) {
  const bool is_text = !FirstInvalidByte(value) && value.find('\0') == std::string::npos;
  return is_text ? value : std::to_string(value.size()) + " bytes";
}

}  // namespace

void FieldBook::Add(const std::vector<FieldRow>& rows, const resources::DialogTemplate& page) {
  for (const FieldRow& row : rows) Add(row, resources::FieldLabel(row, page));
}

void FieldBook::Add(const FieldRow& row, const std::string& label) {
  for (const std::string_view attribute : row.attributes) {
    labels_.try_emplace(std::string(attribute), label);
    kinds_.try_emplace(std::string(attribute), row.kind);
  }
}

void FieldBook::Add(const AttributeWords& words) {
  labels_.insert_or_assign(std::string(words.attribute), std::string(words.label));
  words_.try_emplace(std::string(words.attribute), words);
}

std::string FieldBook::LabelOf(std::string_view attribute) const {
  const auto found = labels_.find(std::string(attribute));
  return found == labels_.end() || found->second.empty() ? std::string(attribute) : found->second;
}

std::string FieldBook::TextOf(std::string_view attribute,
                              const changes::AttributeValues& values) const {
  if (values.empty()) return "not set";
  const auto words = words_.find(std::string(attribute));
  if (words != words_.end()) return words->second.text(values);
  const auto kind = kinds_.find(std::string(attribute));
  const bool is_flag = kind != kinds_.end() && kind->second == FieldKind::kFlag;
  std::string text;
  for (const std::string& value : values) {
    if (!text.empty()) text += "; ";
    if (is_flag && (value == "0" || value == "1")) {
      text += value == "1" ? "yes" : "no";
    } else {
      text += TextOfOne(value);
    }
  }
  return text;
}

std::string FieldBook::TextIn(const changes::ValueChange& change, bool is_after) const {
  const changes::AttributeValues& values = is_after ? change.wanted : change.seen;
  const auto words = words_.find(change.attribute);
  if (words == words_.end() || !words->second.is_told_in_part) {
    return TextOf(change.attribute, values);
  }
  if (values.empty()) return is_after ? "nobody put in" : "nobody taken out";
  return (is_after ? "put in: " : "taken out: ") + words->second.text(values);
}

std::vector<ShownField> FieldBook::FieldsOf(const changes::Change& change) const {
  std::vector<ShownField> fields;
  for (const changes::ValueChange& value : change.attributes) {
    fields.push_back({.attribute = value.attribute,
                      .field = LabelOf(value.attribute),
                      .before = TextIn(value, false),
                      .after = TextIn(value, true)});
  }
  std::map<std::string, int> counts;
  for (const ShownField& field : fields) ++counts[field.field];
  for (ShownField& field : fields) {
    if (counts[field.field] > 1) field.field += " (" + field.attribute + ")";
  }
  return fields;
}

}  // namespace pelora::session
