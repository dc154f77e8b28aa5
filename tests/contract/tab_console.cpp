// SPDX-License-Identifier: Apache-2.0
#include "tests/contract/tab_console.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>

#include "resources/resource.h"

namespace pelora::contract {

void PrintTo(const TabBox& box, std::ostream* out) {
  *out << '"' << box.caption << "\": \"" << box.text << '"';
}

TabBox ToTabBox(const Message& message) {
  TabBox box = {.caption = message.caption.value_or("Error"), .text = message.text};
  std::erase(box.text, '\r');
  return box;
}

TabBox ErrorBox(const std::string& text, const std::string& code) {
  return {.caption = "Pelora Error", .text = text + "\n\nError code: " + code};
}

void TabConsole::TypeAddress(const std::string& address) {
  PlayNext([address](DialogPlayer& user) {
    user.Erase(IDC_EMAIL_ADDRESS);
    user.Type(IDC_EMAIL_ADDRESS, address);
    user.Click(static_cast<ControlId>(kDialogOk));
  });
}

std::vector<std::string> RowsOf(const IListBox& list) {
  std::vector<std::string> rows;
  for (RowIndex row = 0; row < list.Count(); ++row) rows.push_back(list.Text(row));
  return rows;
}

RowIndex RowOf(const IListBox& list, const std::string& text) {
  const std::vector<std::string> rows = RowsOf(list);
  const auto found = std::ranges::find(rows, text);
  EXPECT_NE(found, rows.end()) << "there is no row " << text;
  return static_cast<RowIndex>(found - rows.begin());
}

std::vector<std::string> ToLines(const TabConsole& console, const TabValues& values) {
  std::vector<std::string> lines;
  for (const auto& [attribute, stored] : values) {
    if (stored.empty() || attribute == "distinguishedName") continue;
    std::vector<std::string> list = stored;
    if (!console.KeepsOrder()) std::ranges::sort(list);
    std::string line = attribute + ":";
    for (std::size_t value = 0; value < list.size(); ++value) {
      line += (value == 0 ? " " : " | ") + list[value];
    }
    lines.push_back(line);
  }
  return lines;
}

}  // namespace pelora::contract
