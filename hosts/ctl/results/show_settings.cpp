// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/results/show_settings.h"

#include <algorithm>

#include "hosts/ctl/results/json_line.h"
#include "hosts/ctl/results/text_table.h"
#include "hosts/session/visible_text.h"

namespace pelora::ctl {
namespace {

/// Prints fields under their tabs and groups.
class TabPrinter {
 public:
  explicit TabPrinter(Output& output) : output_(output) {}
  TabPrinter(const TabPrinter&) = delete;
  TabPrinter& operator=(const TabPrinter&) = delete;
  ~TabPrinter() { EndGroup(); }

  void Add(const Field& field, const std::vector<std::string>& lines) {
    if (field.tab != tab_ || field.place.group != group_ || is_first_) StartGroup(field);
    std::string label = field.place.label;
    std::string name = field.row.name;
    if (lines.empty()) table_.Add({label, name});
    for (const std::string& line : lines) {
      table_.Add({std::exchange(label, {}), std::exchange(name, {}), line});
    }
  }

 private:
  void StartGroup(const Field& field) {
    EndGroup();
    if (field.tab != tab_ || is_first_) output_.WriteLine("  " + session::VisibleText(field.tab));
    if (!field.place.group.empty())
      output_.WriteLine("    " + session::VisibleText(field.place.group));
    tab_ = field.tab;
    group_ = field.place.group;
    is_first_ = false;
  }
  void EndGroup() {
    table_.Print(output_, "      ");
    table_ = TextTable({});
  }

  Output& output_;
  TextTable table_{{}};
  bool is_first_ = true;
  std::string tab_;
  std::string group_;
};

}  // namespace

void PrintSettings(const ShownObject& object, Output& output) {
  output.WriteLine(session::VisibleText(object.object.name) + " (" + object.word + ")");
  output.WriteLine("  " + session::VisibleText(object.object.dn));
  {
    TabPrinter printer(output);
    for (const ShownField& shown : object.fields) {
      printer.Add(*shown.field, PrintedLines(shown.value));
    }
  }
  output.WriteLine("");
}

std::string SettingsJson(const ShownObject& object) {
  Json json;
  json["dn"] = object.object.dn;
  json["class"] = object.word;
  json["name"] = object.object.name;
  Json& fields = json["fields"] = Json::object();
  for (const ShownField& shown : object.fields) {
    fields[shown.field->row.name] = JsonOf(shown.value);
  }
  return JsonLine(json);
}

void TogetherShown::Add(const ShownObject& object) {
  if (count_++ == 0) {
    for (const ShownField& shown : object.fields) fields_.push_back({shown.field, {}});
  }
  std::erase_if(fields_, [&object](Counted& counted) {
    const auto found = std::ranges::find_if(object.fields, [&counted](const ShownField& shown) {
      return shown.field->row.name == counted.field->row.name;
    });
    if (found == object.fields.end()) return true;
    ++counted.counts[found->value];
    return false;
  });
}

std::vector<std::pair<FieldValue, std::size_t>> TogetherShown::Ordered(const Counts& counts) {
  std::vector<std::pair<FieldValue, std::size_t>> ordered(counts.begin(), counts.end());
  std::ranges::stable_sort(ordered, std::greater<>(), [](const auto& row) { return row.second; });
  return ordered;
}

void TogetherShown::Print(bool as_json, Output& output) const {
  if (as_json) return PrintJson(output);
  if (count_ == 0) return;
  output.WriteLine(std::to_string(count_) + (count_ == 1 ? " object" : " objects"));
  TabPrinter printer(output);
  for (const Counted& counted : fields_) {
    if (counted.counts.size() == 1) {
      printer.Add(*counted.field, PrintedLines(counted.counts.begin()->first));
      continue;
    }
    std::vector<std::string> lines;
    for (const auto& [value, count] : Ordered(counted.counts)) {
      const std::string text = PrintedText(value);
      lines.push_back((text.empty() ? "(nothing)" : text) + " (" + std::to_string(count) + ")");
    }
    printer.Add(*counted.field, lines);
  }
}

void TogetherShown::PrintJson(Output& output) const {
  Json json;
  json["count"] = count_;
  Json& fields = json["fields"] = Json::object();
  for (const Counted& counted : fields_) {
    Json& field = fields[counted.field->row.name];
    if (counted.counts.size() == 1) {
      field = JsonOf(counted.counts.begin()->first);
      continue;
    }
    Json& mixed = field["mixed"] = Json::array();
    for (const auto& [value, count] : Ordered(counted.counts)) {
      Json row;
      row["value"] = JsonOf(value);
      row["count"] = count;
      mixed.push_back(std::move(row));
    }
  }
  output.WriteLine(JsonLine(json));
}

}  // namespace pelora::ctl
