// SPDX-License-Identifier: Apache-2.0
#include "tests/contract/tab_rules.h"

#include <optional>
#include <utility>

namespace pelora::contract {

std::string TabRules::Here(const char* sample) const { return Rebased(sample, console_->Base()); }

TabRules::Lines TabRules::AllHere(const std::vector<const char*>& samples) const {
  Lines names;
  for (const char* const sample : samples) names.push_back(Here(sample));
  return names;
}

void TabRules::Open(const std::string& component, const std::vector<const char*>& samples) {
  names_ = AllHere(samples);
  before_.clear();
  for (const std::string& name : names_) before_.push_back(console_->Stored(name));
  console_->Open(component, names_);
  EXPECT_FALSE(console_->IsApplyEnabled());
}

TabRules::Lines TabRules::Changes(std::size_t number) {
  TabValues now = console_->Stored(names_.at(number));
  TabValues before = std::exchange(before_.at(number), now);
  for (auto& [attribute, values] : before) {
    if (now[attribute] == values) now.erase(attribute);
  }
  for (auto& [attribute, values] : now) {
    if (values.empty() && !before[attribute].empty()) values = {"none"};
  }
  return ToLines(*console_, now);
}

TabRules::Lines TabRules::Apply() {
  console_->ClickApply();
  return Changes();
}

TabRules::Lines TabRules::Ok() {
  console_->ClickOk();
  EXPECT_FALSE(console_->IsOpen());
  return Changes();
}

void TabRules::Retype(ControlId id, std::string_view text) {
  User().Erase(id);
  User().Type(id, text);
}

void TabRules::ClickRow(ControlId list, const std::string& text) {
  User().ClickListRow(list, RowOf(Page().ListBox(list), text));
}

std::string TabRules::SelectedRow(ControlId list) {
  const IListBox& box = Page().ListBox(list);
  const std::optional<RowIndex> row = box.Selection();
  return row ? box.Text(*row) : "nothing";
}

void TabRules::Pick(ControlId button, const std::vector<const char*>& samples) {
  console_->Pick(AllHere(samples));
  User().Click(button);
}

}  // namespace pelora::contract
