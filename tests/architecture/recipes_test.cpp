// SPDX-License-Identifier: Apache-2.0
// The lists of docs/recipes.md, held to what the program has.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>

#include "features/feature_table.h"
#include "tests/architecture/field_tables.h"
#include "tests/architecture/source_tree.h"

namespace pelora::test {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;
using Lines = std::vector<std::string>;
namespace fs = std::filesystem;

/// One line of a recipe: what a file, or one of the files of a folder, has.
struct Step {
  std::string path;
  std::string has;
};
using Recipes = std::map<std::string, std::vector<Step>>;

/// What was added once: for each thing that a file may have the text to be found there. Empty: this
/// one has nothing of the kind.
using Added = std::map<std::string, std::string>;

std::string ReadText(const fs::path& path) {
  std::ifstream stream(path);
  return {std::istreambuf_iterator<char>(stream), {}};
}

/// The cells of a table's line, without blanks around them.
Lines CellsOf(const std::string& line) {
  Lines cells;
  for (std::size_t at = 1; at < line.size();) {
    const std::size_t end = std::min(line.find(" |", at), line.size());
    cells.push_back(line.substr(at + 1, end - at - 1));
    at = end + 2;
  }
  return cells;
}

Recipes ReadRecipes(std::istream& document) {
  Recipes recipes;
  std::string title;
  for (std::string line; std::getline(document, line);) {
    if (line.starts_with("## ")) title = line.substr(3);
    if (!line.starts_with("| `")) continue;
    const Lines cells = CellsOf(line);
    const std::string path = cells.at(0);
    recipes[title].push_back({.path = path.substr(1, path.size() - 2), .has = cells.at(1)});
  }
  return recipes;
}

Recipes ReadRecipes() {
  std::ifstream document(SourceRoot() / "docs/recipes.md");
  return ReadRecipes(document);
}

/// Texts are looked for as a person reads them: without the marks of mnemonics.
std::string WithoutMarks(std::string text) {
  std::erase(text, '&');
  return text;
}

/// The texts of the files that a step names.
const Lines& TextsOf(const std::string& path) {
  static std::map<std::string, Lines> read;
  const auto [found, is_new] = read.try_emplace(path);
  if (!is_new) return found->second;
  const fs::path full = SourceRoot() / path;
  if (!path.ends_with("/*")) {
    if (fs::is_regular_file(full)) found->second.push_back(WithoutMarks(ReadText(full)));
    return found->second;
  }
  for (const auto& entry : fs::recursive_directory_iterator(full.parent_path())) {
    if (entry.is_regular_file()) found->second.push_back(WithoutMarks(ReadText(entry.path())));
  }
  return found->second;
}

bool IsLetter(char sign) {
  return std::isalnum(static_cast<unsigned char>(sign)) != 0 || sign == '_';
}

/// Whether a text has a word, and not as a part of a longer one.
bool HasWord(const std::string& text, const std::string& word) {
  for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + 1)) {
    const std::size_t end = at + word.size();
    const bool begins = at == 0 || !IsLetter(text[at - 1]);
    if (begins && (end == text.size() || !IsLetter(text[end]))) return true;
  }
  return false;
}

/// What the steps of a recipe name and does not have what was added.
Lines Untrue(const std::vector<Step>& recipe, const std::vector<Added>& added) {
  Lines untrue;
  for (const Step& step : recipe) {
    const Lines& texts = TextsOf(step.path);
    if (texts.empty()) untrue.push_back("there is no " + step.path);
    for (const Added& thing : added) {
      const auto has = thing.find(step.has);
      if (has == thing.end()) {
        untrue.push_back(step.path + " has what nobody knows: " + step.has);
        break;
      }
      const std::string word = WithoutMarks(has->second);
      const auto has_word = [&](const std::string& text) { return HasWord(text, word); };
      if (word.empty() || std::ranges::any_of(texts, has_word)) continue;
      untrue.push_back(step.path + " lacks " + step.has + ", " + word);
    }
  }
  return untrue;
}

/// The name of a number in resource.h that begins so; the first one, where a number has several.
std::string NumberName(const std::string& prefix, std::uint32_t number) {
  std::ifstream header(SourceRoot() / "src/resources/resource.h");
  for (std::string line; std::getline(header, line);) {
    if (!line.starts_with("#define " + prefix)) continue;
    if (line.ends_with(" " + std::to_string(number))) return line.substr(8, line.rfind(' ') - 8);
  }
  return "no name of " + std::to_string(number);
}

bool IsOurs(const std::string& attribute) { return attribute.starts_with("pelora"); }

/// What every field of the pages is, once for each of its attributes.
std::vector<Added> AddedFields(const std::vector<ConsoleRole>& roles) {
  std::vector<Added> added;
  for (const DocumentedField& field : FieldsOfPages(roles)) {
    // Features have a recipe of their own.
    if (field.component == "CPropPageFeatures") continue;
    for (const std::string& attribute : field.attributes) {
      added.push_back({{"the attribute", attribute},
                       {"the attribute of ours", IsOurs(attribute) ? attribute : ""},
                       {"the control's number", NumberName("IDC_", field.control)},
                       {"the label", field.has_label_of_its_own ? field.label : ""},
                       {"the class", std::string(field.component)},
                       {"the directory class", field.object_word}});
    }
  }
  return added;
}

std::vector<Added> AddedTabs() {
  std::vector<Added> added;
  for (const DocumentedField& field : FieldsOfPages({ConsoleRole::kPropertyPage})) {
    const std::string name = NumberName("IDD_", field.dialog);
    std::string file = name.substr(name.find('_') + 1) + ".rc";
    std::ranges::transform(file, file.begin(), [](char sign) {
      return static_cast<char>(std::tolower(static_cast<unsigned char>(sign)));
    });
    if (file.starts_with("proppage_")) file.replace(0, 8, "prop_page");
    added.push_back({{"the template", name},
                     {"the template's number", std::to_string(field.dialog)},
                     {"the template's file", file},
                     {"the class", std::string(field.component)},
                     {"the page's title", field.page}});
  }
  return added;
}

std::vector<Added> AddedFeatures() {
  std::vector<Added> added;
  for (const std::string& name : ServerFeatures().Names()) added.push_back({{"the feature", name}});
  return added;
}

std::vector<Added> AddedHosts() {
  std::vector<Added> added;
  for (const auto& entry : fs::directory_iterator(SourceRoot() / "hosts")) {
    if (!entry.is_directory()) continue;
    const std::string name = entry.path().filename().string();
    added.push_back({{"the host", name}, {"the host's folder", "hosts/" + name}});
  }
  return added;
}

const Recipes& All() {
  static const Recipes recipes = ReadRecipes();
  return recipes;
}

TEST(Recipes, AnAttributeOnATab) {
  EXPECT_THAT(Untrue(All().at("An attribute on a tab"), AddedFields({ConsoleRole::kPropertyPage})),
              IsEmpty());
}

TEST(Recipes, ATab) { EXPECT_THAT(Untrue(All().at("A tab"), AddedTabs()), IsEmpty()); }

TEST(Recipes, AFeature) { EXPECT_THAT(Untrue(All().at("A feature"), AddedFeatures()), IsEmpty()); }

TEST(Recipes, AFieldOnAWizardPage) {
  EXPECT_THAT(Untrue(All().at("A field on a wizard page"),
                     AddedFields({ConsoleRole::kCreationWizardExtension})),
              IsEmpty());
}

TEST(Recipes, AHost) { EXPECT_THAT(Untrue(All().at("A host"), AddedHosts()), IsEmpty()); }

TEST(Recipes, ThereAreFiveAndEachNamesFiles) {
  EXPECT_THAT(All(), SizeIs(5));
  for (const auto& [title, steps] : All()) EXPECT_GT(steps.size(), 3U) << title;
}

TEST(Recipes, WhatIsNotTrueIsFound) {
  const std::vector<Added> added = {{{"the attribute", "peloraNothing"}}};
  const std::vector<Step> steps = {{"src/directory/attribute_catalogue.h", "the attribute"},
                                   {"src/nowhere.h", "the attribute"},
                                   {"src/directory/*", "the flavour"}};
  EXPECT_THAT(Untrue(steps, added), SizeIs(4));
  EXPECT_FALSE(HasWord("peloraQuotaWarning", "peloraQuotaWarn"));
  EXPECT_TRUE(HasWord("(peloraQuotaWarn)", "peloraQuotaWarn"));
}

}  // namespace
}  // namespace pelora::test
