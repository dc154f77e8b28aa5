// SPDX-License-Identifier: Apache-2.0
#include "tests/architecture/field_tables.h"

#include <algorithm>
#include <array>
#include <map>

#include "hosts/resources/field_label.h"
#include "platform/new_object_wizard.h"
#include "server/class_table.h"
#include "tests/unit/page_bench.h"

namespace pelora::test {
namespace {

std::string KindWord(const FieldRow& row) {
  static constexpr std::array<const char*, 9> kWords = {
      "flag", "number",    "text",  "name of an object", "name of a server", "default entry",
      "list", "name list", "choice"};
  return (row.is_read_only ? "shown " : "") +
         std::string(kWords.at(static_cast<std::size_t>(row.kind)));
}

/// A page of a component, for as long as it is looked at.
struct LookedAtPage {
  std::string title;
  DialogId number = 0;
  resources::DialogTemplate dialog;
  std::vector<FieldRow> rows;
};

LookedAtPage LookAt(const testing::PageBench& bench, std::string_view component) {
  LookedAtPage looked_at;
  const auto take = [&](const std::unique_ptr<PropSheetPage>& page) {
    looked_at.title = page->Title();
    looked_at.number = page->Template();
    looked_at.dialog = bench.Template(page->Template());
    return false;
  };
  const auto made = Ref<IUnknown>::Adopt(FindClass(component)->create(bench.platform));
  if (const auto rows = Query<IFieldRows>(*made)) looked_at.rows = rows->Fields();
  if (const auto tab = Query<IShellPropSheetExt>(*made)) (void)tab->AddPages(take);
  if (const auto wizard = Query<IDsAdminNewObjExt>(*made)) (void)wizard->AddPages(take);
  return looked_at;
}

std::string WordOf(std::string_view object_class) {
  static const std::map<std::string_view, std::string> kWords = {
      {"inetOrgPerson", "user"},
      {"organizationalUnit", "company"},
      {"computer", "server"},
      {"peloraAddresslist", "address list"},
      {"peloraDynamicDistlist", "dynamic distribution list"}};
  const auto word = kWords.find(object_class);
  return word == kWords.end() ? std::string(object_class) : word->second;
}

std::string InCode(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "`" : ", `") + name + "`";
  return text;
}

std::string Line(const std::vector<std::string>& cells) {
  std::string line = "|";
  for (const std::string& cell : cells) line += " " + cell + " |";
  return line;
}

/// Whose pages are those of users.
bool IsOfUsersToo(const DocumentedField& field) { return field.object_class == "inetOrgPerson"; }

}  // namespace

std::vector<DocumentedField> FieldsOfPages(const std::vector<ConsoleRole>& roles) {
  const testing::PageBench bench;
  std::vector<DocumentedField> fields;
  for (const ConsoleRegistration& row : ConsoleRegistrations()) {
    if (std::ranges::find(roles, row.role) == roles.end()) continue;
    const LookedAtPage page = LookAt(bench, row.component_class);
    for (const FieldRow& field : page.rows) {
      fields.push_back({.object_class = row.object_class,
                        .component = row.component_class,
                        .object_word = WordOf(row.object_class),
                        .dialog = page.number,
                        .control = field.control,
                        .page = page.title,
                        .label = resources::FieldLabel(field, page.dialog),
                        .has_label_of_its_own = field.title.empty() && field.entry.empty(),
                        .name = field.name,
                        .kind = KindWord(field),
                        .attributes = {field.attributes.begin(), field.attributes.end()},
                        .missing = std::string(field.missing)});
    }
  }
  return fields;
}

std::vector<std::string> TabTable() {
  std::vector<std::string> lines = {"| object | tab | field | in scripts | kind | writes |",
                                    "|--|--|--|--|--|--|"};
  for (const DocumentedField& field : FieldsOfPages({ConsoleRole::kPropertyPage})) {
    if (IsOfUsersToo(field)) continue;
    const bool is_shown = field.kind.starts_with("shown");
    lines.push_back(
        Line({std::string(field.object_class), field.page, field.label, InCode({field.name}),
              field.kind, is_shown ? "nothing" : InCode(field.attributes)}));
  }
  return lines;
}

std::vector<std::string> WizardTable() {
  std::vector<std::string> lines = {"| object | field | in scripts | kind | needed |",
                                    "|--|--|--|--|--|"};
  for (const DocumentedField& field :
       FieldsOfPages({ConsoleRole::kCreationWizard, ConsoleRole::kCreationWizardExtension})) {
    if (IsOfUsersToo(field)) continue;
    lines.push_back(Line({std::string(field.object_class), field.label, InCode({field.name}),
                          field.kind, field.missing.empty() ? "" : "yes"}));
  }
  return lines;
}

}  // namespace pelora::test
