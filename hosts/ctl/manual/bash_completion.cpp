// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/manual/bash_completion.h"

#include <set>
#include <span>
#include <stdexcept>
#include <vector>

#include "hosts/ctl/command_line/command.h"
#include "hosts/ctl/fields/fields.h"
#include "hosts/ctl/fields/offline_catalogue.h"
#include "hosts/session/check/check_rules.h"
#include "hosts/session/new_object_kind.h"

namespace pelora::ctl {
namespace {

using Words = std::vector<std::string>;

std::string Joined(const Words& words) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : " ") + word;
  return text;
}

/// A variable with a list of words.
std::string Variable(const std::string& name, const Words& words) {
  return "_peloractl_" + name + "='" + Joined(words) + "'\n";
}

/// One case of several.
std::string Case(const std::string& pattern, const std::string& action) {
  return "    " + pattern + ") " + action + " ;;\n";
}

std::string Echo(const Words& words) { return "echo '" + Joined(words) + "'"; }

void AddNames(std::span<const Option> options, Words& names) {
  for (const Option& option : options) names.emplace_back(option.name);
}

/// What completes the value of an option.
std::string ActionOf(const Option& option) {
  const auto words = [](const std::string& list) {
    return "_peloractl_words \"" + list + "\" \"$2\"";
  };
  if (option.name == "--rule") return words("$_peloractl_rules");
  if (option.name == "--empty") return words("clears");
  if (option.value == "CLASS") return words("$_peloractl_classes");
  if (option.name == "--columns") return words("dn name class $_peloractl_columns");
  if (option.value == "FILE" || option.value == "REPORT") return "_peloractl_files \"$2\"";
  return "COMPREPLY=()";
}

std::string OptionValues() {
  std::vector<std::span<const Option>> all = {ConnectionOptions(), CommonOptions()};
  for (const Command* command : Commands()) {
    all.insert(all.end(), command->options.begin(), command->options.end());
  }
  std::string text;
  std::set<std::string_view> told;
  for (const std::span<const Option> options : all) {
    for (const Option& option : options) {
      // A value that may be left out is not waited for.
      const bool takes_value = !option.value.empty() && !option.value.starts_with('[');
      if (takes_value && told.insert(option.name).second) {
        text += Case(std::string(option.name), ActionOf(option));
      }
    }
  }
  return text;
}

std::string CommandOptions() {
  Words of_all;
  AddNames(ConnectionOptions(), of_all);
  AddNames(CommonOptions(), of_all);
  of_all.emplace_back("--help");
  std::string text = Case("\"\"", Echo(of_all));
  for (const Command* command : Commands()) {
    Words names;
    for (const std::span<const Option> options : command->options) AddNames(options, names);
    if (!names.empty()) text += Case(std::string(command->name), Echo(names));
  }
  return text;
}

struct FieldWords {
  Words assignments;
  Words columns;
  /// Cases.
  std::string values;
};

FieldWords WordsOfFields(const resources::ResourceFile& module) {
  OfflineCatalogue offline(module);
  Words classes;
  for (const session::NewObjectKind& kind : session::NewObjectKinds()) {
    classes.emplace_back(kind.class_name);
  }
  FieldWords words;
  for (const Field* field : offline.catalogue.FieldsOfAll(classes)) {
    words.columns.push_back(field->row.name);
    if (field->row.is_read_only) continue;
    words.assignments.push_back(field->row.name + "=");
    Words values;
    if (field->row.kind == FieldKind::kFlag) values = {"yes", "no"};
    for (const std::string_view choice : field->row.choices) values.push_back(ChoiceWord(choice));
    if (!values.empty()) words.values += Case(field->row.name, Echo(values));
  }
  return words;
}

std::string Variables(const FieldWords& fields) {
  Words commands;
  for (const Command* command : Commands()) commands.emplace_back(command->name);
  Words classes;
  for (const session::NewObjectKind& kind : session::NewObjectKinds()) {
    classes.emplace_back(kind.word);
  }
  Words rules;
  for (const session::CheckRule& rule : session::CheckRules()) rules.emplace_back(rule.name);
  return Variable("commands", commands) + Variable("classes", classes) + Variable("rules", rules) +
         Variable("columns", fields.columns) + Variable("fields", fields.assignments);
}

/// Puts a text in place of the line that stands for it.
void PutIn(const std::string& mark, const std::string& text, std::string& script) {
  const std::size_t place = script.find("\n" + mark + "\n");
  if (place == std::string::npos) throw std::runtime_error("missing: " + mark);
  script.replace(place + 1, mark.size() + 1, text);
}

}  // namespace

std::string BashCompletion(std::string_view script, const resources::ResourceFile& module) {
  const FieldWords fields = WordsOfFields(module);
  std::string text(script);
  PutIn("@WORDS@", Variables(fields), text);
  PutIn("@OPTION_VALUES@", OptionValues(), text);
  PutIn("@COMMAND_OPTIONS@", CommandOptions(), text);
  PutIn("@FIELD_VALUES@", fields.values, text);
  return text;
}

}  // namespace pelora::ctl
