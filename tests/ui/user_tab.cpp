// SPDX-License-Identifier: Apache-2.0
#include "tests/ui/user_tab.h"

#include <algorithm>
#include <array>
#include <optional>
#include <set>

namespace pelora::test {
namespace {

/// What the tab shows; each is taken away before a test's own values are given.
constexpr std::array kShown = {"mail",
                               "otherMailbox",
                               "peloraSendAsPrivilege",
                               "peloraHidden",
                               "peloraQuotaOverride",
                               "peloraQuotaWarn",
                               "peloraQuotaSoft",
                               "peloraQuotaHard",
                               "peloraAdmin",
                               "peloraSharedStoreOnly",
                               "peloraResourceType",
                               "peloraUserServer"};

std::string ReplaceLines(const std::string& name, const std::vector<std::string>& values) {
  std::string lines = "replace: " + name + "\n";
  for (const std::string& value : values) lines += name + ": " + value + "\n";
  return lines + "-\n";
}

}  // namespace

UserTab::UserTab() = default;

void UserTab::Give(const char* dn, Values values) {
  std::map<std::string, std::vector<std::string>> given;
  for (const char* const name : kShown) given[name] = {};
  for (auto& [name, value] : values) given[name].push_back(std::move(value));
  given.try_emplace("peloraAccount", std::vector<std::string>{"1"});
  given.try_emplace("peloraResourceCapacity", std::vector<std::string>{"0"});
  std::string change = std::string("dn: ") + dn + "\nchangetype: modify\n";
  for (const auto& [name, texts] : given) change += ReplaceLines(name, texts);
  ModifyEntry(file(), change);
}

void UserTab::Open(const std::vector<std::string>& names) {
  names_ = names;
  before_.clear();
  for (const std::string& name : names) before_.push_back(SearchEntry(file(), name));
  sheet_ = std::make_unique<OpenSheet>(session(), module(), Objects(names));
}

void UserTab::OpenUser(Values values) {
  Give(kBirgit, std::move(values));
  Open({kBirgit});
}

UserTab::Lines UserTab::Rows(ControlId list) {
  const IListBox& box = page().ListBox(list);
  Lines rows;
  for (RowIndex row = 0; row < box.Count(); ++row) rows.push_back(box.Text(row));
  return rows;
}

std::string UserTab::SelectedRow(ControlId list) {
  const IListBox& box = page().ListBox(list);
  const std::optional<RowIndex> row = box.Selection();
  return row ? box.Text(*row) : "nothing";
}

void UserTab::ClickRow(ControlId list, std::string_view text) {
  const Lines rows = Rows(list);
  const auto found = std::ranges::find(rows, text);
  ASSERT_NE(found, rows.end()) << text;
  user().ClickListRow(list, static_cast<RowIndex>(found - rows.begin()));
}

void UserTab::EnterAddress(ControlId button, std::string_view address) {
  modal_scripts().Add([address = std::string(address)](QWidget& window) {
    contract::QtPlayer typist(window);
    typist.Erase(IDC_EMAIL_ADDRESS);
    typist.Type(IDC_EMAIL_ADDRESS, address);
    typist.PressEnter();
  });
  user().Click(button);
}

UserTab::Lines UserTab::Apply() {
  sheet().ClickApply();
  const EntryLines after = SearchEntry(file(), names_.front());
  return Difference(std::exchange(before_.front(), after), after);
}

UserTab::Lines UserTab::OkDifference(std::size_t number) {
  if (sheet().IsOpen()) sheet().ClickOk();
  EXPECT_FALSE(sheet().IsOpen());
  return Difference(before_.at(number), SearchEntry(file(), names_.at(number)));
}

}  // namespace pelora::test
