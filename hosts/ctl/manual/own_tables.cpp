// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/manual/own_tables.h"

#include <vector>

#include "hosts/ctl/fields/fields.h"
#include "hosts/ctl/fields/offline_catalogue.h"
#include "hosts/ctl/manual/manual_page.h"
#include "hosts/session/check/check_rules.h"
#include "hosts/session/new_object_kind.h"

namespace pelora::ctl {
namespace {

std::string Item(std::string_view term, std::string_view text) {
  return ".TP\n.B " + ManualText(term) + "\n" + ManualText(text) + "\n";
}

std::string Rules() {
  std::string text;
  for (const session::CheckRule& rule : session::CheckRules()) {
    text += Item(rule.name, std::string(rule.finds) + (rule.is_mended ? " (mended by --fix)" : ""));
  }
  return text;
}

std::string Classes() {
  std::string text;
  for (const session::NewObjectKind& kind : session::NewObjectKinds()) {
    text += Item(kind.word, "objects of the directory class " + std::string(kind.class_name));
  }
  return text;
}

std::string WithCommas(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : ", ") + word;
  return text;
}

std::string Fields(const resources::ResourceFile& module) {
  OfflineCatalogue offline(module);
  std::vector<std::string> classes;
  for (const session::NewObjectKind& kind : session::NewObjectKinds()) {
    classes.emplace_back(kind.class_name);
  }
  std::string text;
  for (const Field* field : offline.catalogue.FieldsOfAll(classes)) {
    std::vector<std::string> words;
    for (const session::NewObjectKind& kind : session::NewObjectKinds()) {
      if (offline.catalogue.Find(kind.class_name, field->row.name) != nullptr) {
        words.emplace_back(kind.word);
      }
    }
    std::string about = field->place.label + " (" + std::string(field->KindText());
    if (field->row.is_read_only) about += ", only shown";
    about += "): " + WithCommas(words) + ".";
    std::vector<std::string> choices;
    for (const std::string_view choice : field->row.choices) choices.push_back(ChoiceWord(choice));
    if (!choices.empty()) about += " One of " + WithCommas(choices) + ".";
    text += Item(field->row.name, about);
  }
  return text;
}

}  // namespace

std::string ManualTable(const std::string& name, const resources::ResourceFile& module) {
  if (name == "fields") return Fields(module);
  if (name == "rules") return Rules();
  return name == "classes" ? Classes() : std::string();
}

}  // namespace pelora::ctl
