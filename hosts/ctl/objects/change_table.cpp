// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/objects/change_table.h"

#include <algorithm>
#include <array>
#include <unordered_map>
#include <unordered_set>

#include "directory/ascii_case.h"
#include "hosts/ctl/ctl_error.h"
#include "hosts/ctl/results/result_text.h"
#include "hosts/ctl/text/input_file.h"
#include "hosts/ctl/text/without_blanks.h"
#include "hosts/ldap/name_key.h"
#include "hosts/session/find/list_columns.h"

namespace pelora::ctl {
namespace {

constexpr std::array<std::string_view, 2> kObjectColumns = {"dn", "object"};
/// Printed by `list` for the person, and nothing to change. So is what the console's lists show of
/// every object.
constexpr std::array<std::string_view, 2> kIgnoredColumns = {"name", "class"};

bool IsAmong(std::span<const std::string_view> names, const std::string& name) {
  return std::ranges::any_of(
      names, [&name](std::string_view known) { return EqualsWithoutCase(known, name); });
}

}  // namespace

ChangeTable::ChangeTable(std::string_view text, std::string name, FieldCatalogue& catalogue,
                         bool empty_clears)
    : text_(text),
      name_(std::move(name)),
      empty_clears_(empty_clears),
      separator_(CsvReader::SeparatorOf(text)) {
  CsvReader reader(text_, separator_);
  std::vector<std::string> header;
  const bool has_header = reader.Next(header);
  if (reader.fault()) Fail(reader.fault()->line, reader.fault()->text);
  if (!has_header) Fail(1, "there is no header row");
  ReadHeader(header, reader.line(), catalogue);
  ReadRows(reader);
}

void ChangeTable::Fail(std::size_t line, const std::string& text) const {
  throw WrongUsage(name_ + ", line " + std::to_string(line) + ": " + text);
}

void ChangeTable::ReadHeader(const std::vector<std::string>& header, std::size_t line,
                             FieldCatalogue& catalogue) {
  bool has_object = false;
  for (const std::string& cell : header) {
    const std::string name(WithoutBlanks(cell));
    Column column = ColumnOf(name, line, catalogue);
    for (std::size_t before = 0; before < columns_.size(); ++before) {
      const bool is_same_name = EqualsWithoutCase(WithoutBlanks(header[before]), name);
      const bool is_both_object = column.is_object && columns_[before].is_object;
      const bool is_same_field = !column.field.empty() && columns_[before].field == column.field;
      const bool is_merged = column.operation != Assignment::Operation::kSet &&
                             columns_[before].operation != Assignment::Operation::kSet;
      if (is_same_name || is_both_object || (is_same_field && !is_merged)) {
        Fail(line, "the column \"" + name + "\" is given twice");
      }
    }
    if (column.is_object) object_column_ = columns_.size();
    has_object = has_object || column.is_object;
    columns_.push_back(std::move(column));
  }
  if (!has_object) Fail(line, "there is no column \"dn\" or \"object\"");
}

ChangeTable::Column ChangeTable::ColumnOf(const std::string& name, std::size_t line,
                                          FieldCatalogue& catalogue) const {
  Column column;
  column.is_object = IsAmong(kObjectColumns, name);
  column.is_ignored = IsAmong(kIgnoredColumns, name) || IsAmong(session::OwnColumnWords(), name);
  if (column.is_object || column.is_ignored) return column;
  const std::optional<Assignment> assignment = ParseAssignment(name + "=");
  const Field* field = catalogue.FindAnywhere(assignment->field);
  const bool is_set = assignment->operation == Assignment::Operation::kSet;
  if (field == nullptr || (!is_set && !field->IsList())) {
    Fail(line, "there is no column \"" + name + "\"");
  }
  column.field = field->row.name;
  column.operation = assignment->operation;
  return column;
}

void ChangeTable::ReadRows(CsvReader& reader) {
  std::vector<std::string> cells;
  std::size_t offset = reader.offset();
  while (reader.Next(cells)) {
    const std::size_t begin = std::exchange(offset, reader.offset());
    if (std::ranges::all_of(cells, &std::string::empty)) continue;
    if (cells.size() != columns_.size()) {
      Fail(reader.line(), std::to_string(cells.size()) + " cells, and the header has " +
                              std::to_string(columns_.size()));
    }
    std::string object(WithoutBlanks(cells[object_column_]));
    if (object.empty()) Fail(reader.line(), "no object is named");
    rows_.push_back({begin, reader.line()});
    targets_.push_back({.given = std::move(object), .dn = {}, .problem = {}});
  }
  if (reader.fault()) Fail(reader.fault()->line, reader.fault()->text);
}

void ChangeTable::Resolve(ObjectFinder& finder, std::span<const std::string> done) {
  std::vector<std::string> given;
  given.reserve(targets_.size());
  for (Target& target : targets_) given.push_back(std::move(target.given));
  targets_ = finder.Resolve(given);
  const std::unordered_set<std::string> done_keys(done.begin(), done.end());
  std::unordered_map<std::string, std::size_t> lines;
  std::size_t kept = 0;
  for (std::size_t row = 0; row < rows_.size(); ++row) {
    Target& target = targets_[row];
    const std::string key = ldap::NameKey(target.dn.empty() ? target.given : target.dn);
    const auto [first, is_new] = lines.try_emplace(key, rows_[row].line);
    if (!is_new) {
      Fail(rows_[row].line,
           target.given + " is named on line " + std::to_string(first->second) + " already");
    }
    if (done_keys.contains(key)) continue;
    rows_[kept] = rows_[row];
    if (kept != row) targets_[kept] = std::move(target);
    ++kept;
  }
  rows_.resize(kept);
  targets_.resize(kept);
}

std::span<const Assignment> ChangeTable::AssignmentsAt(std::size_t at) {
  // It was read before, and has no fault.
  CsvReader reader(text_.substr(rows_[at].offset), separator_);
  std::vector<std::string> cells;
  assignments_.clear();
  if (!reader.Next(cells)) return {};
  for (std::size_t index = 0; index < columns_.size(); ++index) {
    const Column& column = columns_[index];
    if (column.field.empty()) continue;
    const bool clears = empty_clears_ && column.operation == Assignment::Operation::kSet;
    if (cells[index].empty() && !clears) continue;
    assignments_.push_back({column.field, column.operation, std::move(cells[index])});
  }
  return assignments_;
}

std::vector<std::string> ReadDone(const std::string& report) {
  std::vector<std::string> done = DoneObjects(ReadInput(report), InputName(report));
  std::ranges::transform(done, done.begin(), &ldap::NameKey);
  return done;
}

}  // namespace pelora::ctl
