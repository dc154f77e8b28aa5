// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/field_values.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <optional>
#include <utility>

#include "hosts/session/feature_counts.h"
#include "hosts/session/fields/entry_object.h"

namespace pelora::session {
namespace {

constexpr std::string_view kNotSet = "not set";
/// A choice of which the page itself knows no text.
constexpr std::string_view kOtherChoice = "other";
/// So many objects' names are given with a value, and so many values; there may be thousands.
constexpr std::size_t kNamed = 10;

bool IsOneValue(const FieldRow& row) {
  switch (row.kind) {
    case FieldKind::kFlag:
    case FieldKind::kNumber:
    case FieldKind::kText:
    case FieldKind::kName:
    case FieldKind::kServer:
      return row.entry.empty();
    case FieldKind::kChoice:
      return row.entry.empty() && row.choice_of;
    default:
      return false;
  }
}

/// Works out what one object has in a field.
class Reader {
 public:
  Reader(const PageFields& fields, const ldap::Schema& schema) : fields_(fields), schema_(schema) {}

  [[nodiscard]] std::string TextOf(std::size_t field, const DirectoryObject& object) const {
    const FieldRow& row = fields_.touched.Row(field);
    if (fields_.shown) {
      std::string shown = fields_.shown(field, object);
      if (row.kind != FieldKind::kFlag) return shown;
      return shown == "1" ? "yes" : "no";
    }
    if (row.kind == FieldKind::kChoice) return ChoiceText(row, object);
    const std::vector<std::string> seen = fields_.seen(object, row.attributes.front());
    if (row.kind != FieldKind::kFlag) return seen.empty() ? std::string() : seen.front();
    return seen.empty() || seen.front() == "0" ? "no" : "yes";
  }

 private:
  [[nodiscard]] std::string ChoiceText(const FieldRow& row, const DirectoryObject& object) const {
    ldap::Entry entry{.dn = object.dn, .attributes = {}};
    for (const std::string_view attribute : row.attributes) {
      std::vector<std::string> values = fields_.seen(object, attribute);
      if (!values.empty()) entry.attributes.emplace(attribute, std::move(values));
    }
    EntryObject bound(entry, schema_);
    const std::optional<std::size_t> choice = row.choice_of(bound);
    return std::string(choice ? row.choices.at(*choice) : kOtherChoice);
  }

  const PageFields& fields_;
  const ldap::Schema& schema_;
};

/// 0 for what is none, or is larger than a field takes.
std::int32_t NumberIn(const std::string& text) {
  std::int32_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool is_number = error == std::errc() && end == text.data() + text.size();
  return is_number ? std::max(number, 0) : 0;
}

std::string Shown(const HeldValue& value) {
  return value.text.empty() ? std::string(kNotSet) : value.text;
}

}  // namespace

void GatherValues(PageFields& fields, const ldap::Schema& schema,
                  const std::function<void()>& breathe) {
  const std::size_t count = fields.touched.Count();
  const Reader reader(fields, schema);
  std::vector<std::map<std::string, std::vector<std::string>>> objects(count);
  std::vector<GatheredField> gathered(count);
  for (const DirectoryObject& object : fields.selection) {
    for (std::size_t field = 0; field < count; ++field) {
      const FieldRow& row = fields.touched.Row(field);
      if (IsSwitch(row)) CountSwitch(fields, field, object, gathered[field].counts);
      if (!IsOneValue(row)) continue;
      std::string text = reader.TextOf(field, object);
      if (row.kind == FieldKind::kNumber) {
        gathered[field].numbers.push_back(NumberIn(text));
      }
      objects[field][std::move(text)].push_back(object.name);
    }
    breathe();
  }
  for (std::size_t field = 0; field < count; ++field) {
    std::vector<HeldValue>& values = gathered[field].values;
    while (!objects[field].empty()) {
      auto held = objects[field].extract(objects[field].begin());
      values.push_back({.text = std::move(held.key()), .objects = std::move(held.mapped())});
      breathe();
    }
    std::ranges::stable_sort(values, [](const HeldValue& left, const HeldValue& right) {
      return left.objects.size() > right.objects.size();
    });
    breathe();
  }
  for (GatheredField& before : fields.gathered) {
    for (; !before.values.empty(); before.values.pop_back()) breathe();
  }
  fields.gathered = std::move(gathered);
}

std::span<const HeldValue> ValuesOf(const PageFields& fields, std::size_t field) {
  if (field >= fields.gathered.size()) return {};
  return fields.gathered[field].values;
}

std::string ValuesInPlace(std::span<const HeldValue> values) {
  if (values.empty()) return {};
  if (values.size() == 1) {
    return values.front().text.empty() ? std::string(kNotSet) : std::string();
  }
  std::string text;
  for (const HeldValue& value : values.first(std::min(kNamed, values.size()))) {
    text += (text.empty() ? "different: " : ", ") + Shown(value) + " (" +
            std::to_string(value.objects.size()) + ")";
  }
  if (values.size() > kNamed) text += " and " + std::to_string(values.size() - kNamed) + " more";
  return text;
}

std::string ValuesAsLines(std::span<const HeldValue> values) {
  std::string lines;
  for (const HeldValue& value : values.first(std::min(kNamed, values.size()))) {
    lines += (lines.empty() ? "" : "\n") + Shown(value) + ": ";
    const std::size_t named = std::min(kNamed, value.objects.size());
    for (std::size_t at = 0; at < named; ++at) lines += (at == 0 ? "" : ", ") + value.objects[at];
    if (named < value.objects.size()) {
      lines += " and " + std::to_string(value.objects.size() - named) + " more";
    }
  }
  if (values.size() > kNamed) {
    lines += "\nand " + std::to_string(values.size() - kNamed) + " more values";
  }
  return lines;
}

}  // namespace pelora::session
