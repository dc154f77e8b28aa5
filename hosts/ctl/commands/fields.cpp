// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/commands/commands.h"
#include "hosts/ctl/ctl_error.h"
#include "hosts/ctl/fields/offline_catalogue.h"
#include "hosts/ctl/objects/object_classes.h"
#include "hosts/ctl/program.h"
#include "hosts/ctl/results/json_line.h"
#include "hosts/ctl/results/text_table.h"

namespace pelora::ctl {
namespace {

/// The words of the classes that have a field of this name.
std::vector<std::string> ClassesWith(const std::string& field, FieldCatalogue& catalogue) {
  std::vector<std::string> words;
  for (const session::NewObjectKind& kind : session::NewObjectKinds()) {
    if (catalogue.Find(kind.class_name, field) != nullptr) words.emplace_back(kind.word);
  }
  return words;
}

std::string Joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : ", ") + word;
  return text;
}

void PrintJson(const Field& field, const std::vector<std::string>& classes, Output& output) {
  Json object;
  object["name"] = field.row.name;
  object["label"] = field.place.label;
  object["kind"] = field.KindText();
  object["classes"] = classes;
  object["tab"] = field.tab;
  object["group"] = field.place.group;
  object["readOnly"] = field.row.is_read_only;
  if (field.row.kind == FieldKind::kChoice) {
    Json& choices = object["choices"] = Json::array();
    for (const std::string_view choice : field.row.choices) choices.push_back(ChoiceWord(choice));
  }
  output.WriteLine(JsonLine(object));
}

int RunFields(const CommandLine& line, Program& program) {
  if (line.arguments.size() > 1) throw WrongUsage("one class at most can be named");
  OfflineCatalogue offline(program.module);
  std::vector<std::string> classes;
  for (const session::NewObjectKind& kind : session::NewObjectKinds()) {
    classes.emplace_back(kind.class_name);
  }
  if (!line.arguments.empty()) {
    classes = {std::string(KindOfWord(line.arguments.front()).class_name)};
  }
  TextTable table({"NAME", "LABEL", "KIND", "CLASSES"});
  for (const Field* field : offline.catalogue.FieldsOfAll(classes)) {
    const std::vector<std::string> words = ClassesWith(field->row.name, offline.catalogue);
    if (line.json) {
      PrintJson(*field, words, program.output);
    } else {
      table.Add(
          {field->row.name, field->place.label, std::string(field->KindText()), Joined(words)});
    }
  }
  if (!line.json) table.Print(program.output);
  return kExitDone;
}

}  // namespace

const Command& FieldsCommand() {
  static const Command kCommand{
      .name = "fields",
      .synopsis = "[CLASS]",
      .summary = "List the fields",
      .description =
          "Shows each field's name, its label on the tab, the kind of its value, and "
          "the classes that\nhave it. No directory is needed.",
      .options = {},
      .run = &RunFields};
  return kCommand;
}

}  // namespace pelora::ctl
