// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/field_values.h"

#include <algorithm>
#include <map>
#include <utility>

namespace pelora::session {
namespace {

constexpr std::string_view kNotSet = "not set";
/// So many objects' names are given with a value; there may be thousands.
constexpr std::size_t kNamed = 10;

bool IsOneValue(const FieldRow& row) {
  switch (row.kind) {
    case FieldKind::kFlag:
    case FieldKind::kNumber:
    case FieldKind::kText:
    case FieldKind::kName:
    case FieldKind::kServer:
      return row.entry.empty();
    default:
      return false;
  }
}

std::string ReadText(const FieldRow& row, const std::vector<std::string>& seen) {
  if (row.kind != FieldKind::kFlag) return seen.empty() ? std::string() : seen.front();
  return seen.empty() || seen.front() == "0" ? "no" : "yes";
}

std::string Shown(const FieldValue& value) {
  return value.text.empty() ? std::string(kNotSet) : value.text;
}

}  // namespace

std::vector<FieldValue> ValuesOf(const PageFields& fields, std::size_t field) {
  const FieldRow& row = fields.touched.Row(field);
  std::vector<FieldValue> values;
  if (!IsOneValue(row)) return values;
  std::map<std::string, std::vector<std::string>> objects;
  for (const DirectoryObject& object : fields.selection) {
    objects[ReadText(row, fields.seen(object, row.attributes.front()))].push_back(object.name);
  }
  for (auto& [text, names] : objects) values.push_back({.text = text, .objects = std::move(names)});
  std::ranges::stable_sort(values, [](const FieldValue& left, const FieldValue& right) {
    return left.objects.size() > right.objects.size();
  });
  return values;
}

std::string ValuesInPlace(const std::vector<FieldValue>& values) {
  if (values.empty()) return {};
  if (values.size() == 1) {
    return values.front().text.empty() ? std::string(kNotSet) : std::string();
  }
  std::string text;
  for (const FieldValue& value : values) {
    text += (text.empty() ? "different: " : ", ") + Shown(value) + " (" +
            std::to_string(value.objects.size()) + ")";
  }
  return text;
}

std::string ValuesAsLines(const std::vector<FieldValue>& values) {
  std::string lines;
  for (const FieldValue& value : values) {
    lines += (lines.empty() ? "" : "\n") + Shown(value) + ": ";
    const std::size_t named = std::min(kNamed, value.objects.size());
    for (std::size_t at = 0; at < named; ++at) lines += (at == 0 ? "" : ", ") + value.objects[at];
    if (named < value.objects.size()) {
      lines += " and " + std::to_string(value.objects.size() - named) + " more";
    }
  }
  return lines;
}

}  // namespace pelora::session
