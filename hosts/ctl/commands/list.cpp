// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <set>

#include "directory/ascii_case.h"
#include "hosts/ctl/commands/commands.h"
#include "hosts/ctl/ctl_error.h"
#include "hosts/ctl/fields/fields.h"
#include "hosts/ctl/fields/offline_catalogue.h"
#include "hosts/ctl/objects/object_classes.h"
#include "hosts/ctl/results/json_line.h"
#include "hosts/ctl/results/text_table.h"
#include "hosts/ctl/text/without_blanks.h"
#include "hosts/ctl/workplace.h"
#include "hosts/ldap/case_fold.h"
#include "hosts/session/visible_text.h"

namespace pelora::ctl {
namespace {

constexpr std::string_view kName = "dn";
constexpr std::string_view kDefaultColumns =
    "dn,name,class,mail,accountType,peloraUserServer,peloraQuotaHard";

/// One listed object: what stands in its columns, and what it is ordered by.
struct Row {
  std::string order;
  std::string dn;
  std::vector<FieldValue> cells;
};

/// What is shown of each object.
class Columns {
 public:
  /// Throws `WrongUsage` for a name that is neither a field nor one of the object's own, and for
  /// one that is named twice.
  Columns(const std::string& names, FieldCatalogue& fields) {
    std::string_view left = names;
    while (true) {
      const std::size_t end = left.find(',');
      Add(WithoutBlanks(left.substr(0, end)), fields);
      if (end == std::string_view::npos) return;
      left.remove_prefix(end + 1);
    }
  }

  [[nodiscard]] const std::vector<std::string>& names() const { return names_; }
  void Remove(std::string_view name) { std::erase(names_, name); }

  /// The attributes that the columns need.
  [[nodiscard]] std::vector<std::string> Attributes(FieldCatalogue& fields) const {
    std::set<std::string> attributes = {"objectClass", "name"};
    for (const session::NewObjectKind& kind : session::NewObjectKinds()) {
      for (const std::string& name : names_) {
        const Field* field = fields.Find(kind.class_name, name);
        if (field == nullptr) continue;
        const bool needs_all = field->row.kind == FieldKind::kChoice;
        const auto& read = field->row.attributes;
        attributes.insert(read.begin(), needs_all ? read.end() : read.begin() + 1);
      }
    }
    return {attributes.begin(), attributes.end()};
  }

  [[nodiscard]] Row RowOf(const ldap::Entry& entry, const session::DirectoryObject& object,
                          Workplace& workplace) const {
    Row row{.order = ldap::FoldCase(object.name), .dn = entry.dn, .cells = {}};
    EntryObject bound(entry, workplace.store().schema());
    for (const std::string& name : names_) {
      if (name == kName) {
        row.cells.emplace_back(entry.dn);
      } else if (name == "name") {
        row.cells.emplace_back(object.name);
      } else if (name == "class") {
        row.cells.emplace_back(std::string(WordOf(object.kind)));
      } else {
        const Field* field = workplace.catalogue.Find(object.kind.class_name, name);
        row.cells.push_back(field == nullptr ? FieldValue() : ReadField(*field, entry, bound));
      }
    }
    return row;
  }

 private:
  void Add(std::string_view given, FieldCatalogue& fields) {
    std::string name = NameOf(given, fields);
    // In a table that is applied later it would be wrong, and in JSON one would hide the other.
    if (std::ranges::find(names_, name) != names_.end()) {
      throw WrongUsage("the column \"" + name + "\" is named twice");
    }
    names_.push_back(std::move(name));
  }

  static std::string NameOf(std::string_view given, FieldCatalogue& fields) {
    for (const std::string_view own :
         {kName, std::string_view("name"), std::string_view("class")}) {
      if (EqualsWithoutCase(given, own)) return std::string(own);
    }
    const Field* field = fields.FindAnywhere(given);
    if (field == nullptr) throw WrongUsage("there is no column \"" + std::string(given) + "\"");
    return field->row.name;
  }

  /// As the fields spell themselves.
  std::vector<std::string> names_;
};

std::vector<std::string> Printed(const Row& row) {
  std::vector<std::string> cells;
  for (const FieldValue& cell : row.cells) cells.push_back(PrintedText(cell));
  return cells;
}

void Print(const CommandLine& line, const Columns& columns, const std::vector<Row>& rows,
           Output& output) {
  if (line.json) {
    for (const Row& row : rows) {
      Json object;
      for (std::size_t column = 0; column < row.cells.size(); ++column) {
        object[columns.names()[column]] = JsonOf(row.cells[column]);
      }
      output.WriteLine(JsonLine(object));
    }
  } else if (line.csv) {
    const auto write = [&output](const std::string& text) {
      output.Write(output.is_terminal() ? session::VisibleText(text, "\r\n") : text);
    };
    write(CsvRow(columns.names()));
    for (const Row& row : rows) write(CsvRow(Printed(row)));
  } else {
    TextTable table(columns.names());
    for (const Row& row : rows) table.Add(Printed(row));
    table.Print(output);
  }
}

/// The objects that have an account, as far as the directory can tell.
std::string WithAccount(const std::string& filter) {
  return "(&" + filter + "(peloraAccount=*)(!(peloraAccount=0)))";
}

int RunList(const CommandLine& line, Program& program) {
  if (line.arguments.size() > 1) throw WrongUsage("one class at most can be named");
  if (line.csv && line.json) throw WrongUsage("only one of --csv and --json can be given");
  OfflineCatalogue offline(program.module);
  Columns columns(line.columns.value_or(std::string(kDefaultColumns)), offline.catalogue);
  // A table for a person has no room for it.
  if (!line.columns && !line.csv && !line.json) columns.Remove(kName);
  Selection selection{.filter = line.filter, .class_word = {}, .base = line.base};
  if (!line.arguments.empty()) {
    selection.class_word = line.arguments.front();
    (void)KindOfWord(*selection.class_word);
  }
  Workplace workplace(line, program);
  std::vector<Row> rows;
  const auto wrap = [&line](const std::string& filter) {
    return line.all ? filter : WithAccount(filter);
  };
  workplace.finder.Search(
      selection, columns.Attributes(offline.catalogue), wrap, [&](const ldap::Entry& entry) {
        rows.push_back(columns.RowOf(entry, session::ObjectOf(entry), workplace));
      });
  std::ranges::sort(rows, [](const Row& left, const Row& right) {
    return std::tie(left.order, left.dn) < std::tie(right.order, right.dn);
  });
  Print(line, columns, rows, program.output);
  return kExitDone;
}

constexpr std::array kOptions = {
    Option{"--all", "", "Objects without an account too", &CommandLine::all},
    Option{"--base", "DN", "Objects at and below this one", &CommandLine::base},
    Option{"--filter", "LDAPFILTER", "Objects that match this filter", &CommandLine::filter},
    Option{"--columns", "A,B,C", "What to show: dn, name, class and fields", &CommandLine::columns},
    Option{"--csv", "", "Print a table as of RFC 4180", &CommandLine::csv},
};

}  // namespace

const Command& ListCommand() {
  static const Command kCommand{
      .name = "list",
      .synopsis = "[CLASS]",
      .summary = "List objects with chosen columns",
      .description =
          "Lists the objects that have a Pelora account, of one class or of all, "
          "ordered by name.",
      .options = {kOptions},
      .run = &RunList};
  return kCommand;
}

}  // namespace pelora::ctl
