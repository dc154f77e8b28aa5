// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/extension/user_tab.h"

#include "platform/dialog_controller.h"

namespace pelora::windows::test {
namespace {

constexpr const char* kClass = "CPropPageUser";

std::string PathOf(std::size_t number) {
  return "LDAP://dc1/CN=User " + std::to_string(number) + ",OU=Größe,DC=fake,DC=example";
}

}  // namespace

void UserTab::OpenUser(FakeAttributes attributes) { OpenUsers({std::move(attributes)}); }

void UserTab::OpenUsers(std::vector<FakeAttributes> users) {
  std::vector<std::string> paths;
  for (FakeAttributes& attributes : users) {
    attributes.emplace("peloraAccount", Variant::Integer(1));
    paths.push_back(PathOf(paths.size() + 1));
    directory().AddObject(paths.back(), std::move(attributes));
  }
  Open(kClass, paths);
}

UserTab::Lines UserTab::Rows(ControlId list) {
  Win32Dialog page = Page();
  const IListBox& box = page.ListBox(list);
  Lines rows;
  for (RowIndex row = 0; row < box.Count(); ++row) rows.push_back(box.Text(row));
  return rows;
}

void UserTab::ClickRow(ControlId list, std::string_view text) {
  const Lines rows = Rows(list);
  const auto found = std::find(rows.begin(), rows.end(), text);
  ASSERT_NE(found, rows.end()) << text;
  User().ClickListRow(list, static_cast<RowIndex>(found - rows.begin()));
}

void UserTab::EnterAddress(ControlId button, std::string_view address) {
  boxes_.PlayNext([address = std::string(address)](HWND dialog) {
    WindowPlayer user(dialog);
    user.Erase(IDC_EMAIL_ADDRESS);
    user.Type(IDC_EMAIL_ADDRESS, address);
    user.Click(static_cast<ControlId>(kDialogOk));
  });
  User().Click(button);
}

UserTab::Lines UserTab::WithUsual(std::initializer_list<std::string> own) {
  Lines lines(own);
  lines.emplace_back(R"(PutEx CLEAR <1> peloraResourceType "")");
  lines.emplace_back("Put <1> peloraResourceCapacity 0");
  lines.emplace_back("SetInfo <1>");
  return lines;
}

}  // namespace pelora::windows::test
