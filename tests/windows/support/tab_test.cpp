// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/support/tab_test.h"

#include "tests/windows/support/control_lines.h"
#include "tests/windows/support/page_layout.h"
#include "tests/windows/support/screenshot.h"

namespace pelora::windows::test {

ShownBox ErrorBox(const std::string& text) {
  return {.caption = "Pelora Error",
          .text = text,
          .icon = MessageIcon::kError,
          .buttons = {"OK"},
          .owner = "Properties"};
}

TabTest::~TabTest() {
  console_.Close();
  EXPECT_EQ(boxes_.boxes(), std::vector<ShownBox>());
  EXPECT_EQ(boxes_.pending_scripts(), 0U);
  EXPECT_EQ(console_.plan().pending(), 0U);
  EXPECT_EQ(directory().live_objects(), 0U);
  EXPECT_EQ(console_.selection().references(), 0U);
  EXPECT_EQ(console_.selection().locks(), 0U);
  EXPECT_EQ(CanUnloadNow(), S_OK);
}

void TabTest::Open(std::string_view class_name, const std::vector<std::string>& paths) {
  console_.Select(paths);
  ASSERT_TRUE(console_.Open(class_name));
  directory().ClearCalls();
}

std::vector<std::string> TabTest::Controls() { return ControlLines(sheet().Page()); }

void TabTest::Retype(ControlId id, std::string_view text) {
  User().Erase(id);
  User().Type(id, text);
}

std::vector<std::string> TabTest::Apply() {
  directory().ClearCalls();
  sheet().ClickApply();
  return console_.TakeWrites();
}

void TabTest::SavePage(const std::string& name) {
  SavePicture(sheet().window(), name);
  EXPECT_EQ(ClippedControls(sheet().Page()), std::vector<std::string>());
}

}  // namespace pelora::windows::test
