// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/ctl/fields/fields.h"
#include "hosts/ctl/objects/object_finder.h"
#include "hosts/ctl/text/assignment.h"
#include "hosts/ctl/text/csv_reader.h"

namespace pelora::ctl {

/// A table (CSV) of changes, an object a row: read and judged as a whole before anything is done.
/// Of the rows it keeps where they stand, not what they hold.
class ChangeTable {
 public:
  /// Judges the table: its columns, quotation marks and encoding, and that each row names an
  /// object. Throws `WrongUsage` with the line (and the column) of the first fault; `name` is what
  /// the table is called then. `text` outlives the table.
  ChangeTable(std::string_view text, std::string name, FieldCatalogue& catalogue,
              bool empty_clears);

  /// Finds out which objects are meant, and leaves out those of `done`. Throws `WrongUsage` for an
  /// object that two rows name.
  void Resolve(ObjectFinder& finder, std::span<const std::string> done);

  [[nodiscard]] std::span<const Target> targets() const { return targets_; }
  /// What the row of a target asks for; until the next call.
  [[nodiscard]] std::span<const Assignment> AssignmentsAt(std::size_t at);

 private:
  /// A column's part in the changes.
  struct Column {
    bool is_object = false;
    bool is_ignored = false;
    std::string field;
    Assignment::Operation operation = Assignment::Operation::kSet;
  };
  struct Row {
    std::size_t offset = 0;
    std::size_t line = 0;
  };

  void ReadHeader(const std::vector<std::string>& header, std::size_t line,
                  FieldCatalogue& catalogue);
  [[nodiscard]] Column ColumnOf(const std::string& name, std::size_t line,
                                FieldCatalogue& catalogue) const;
  void ReadRows(CsvReader& reader);
  [[noreturn]] void Fail(std::size_t line, const std::string& text) const;

  std::string_view text_;
  std::string name_;
  bool empty_clears_;
  char separator_;
  std::vector<Column> columns_;
  std::size_t object_column_ = 0;
  std::vector<Row> rows_;
  std::vector<Target> targets_;
  std::vector<Assignment> assignments_;
};

/// The keys (`NameKey`) of the objects that a report says are done. Throws `WrongUsage`.
[[nodiscard]] std::vector<std::string> ReadDone(const std::string& report);

}  // namespace pelora::ctl
