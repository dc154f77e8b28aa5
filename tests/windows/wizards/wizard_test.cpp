// SPDX-License-Identifier: Apache-2.0
#include "tests/windows/wizards/wizard_test.h"

#include "tests/windows/support/control_lines.h"
#include "tests/windows/support/page_layout.h"
#include "tests/windows/support/screenshot.h"
#include "tests/windows/support/window_text.h"

namespace pelora::windows::test {

WizardTest::~WizardTest() {
  console_.Close();
  EXPECT_EQ(TakeBoxes(), Lines());
  EXPECT_EQ(console_.plan().pending(), 0U);
  EXPECT_EQ(console_.directory().live_objects(), 0U);
  EXPECT_EQ(console_.site().references(), 0U);
  if (IsLoaded()) {
    EXPECT_EQ(CanUnloadNow(), S_OK);
  }
}

void WizardTest::Open(std::string_view class_name) {
  ASSERT_EQ(console_.Add(class_name), S_OK);
  ASSERT_TRUE(console_.Show());
}

void WizardTest::GoToPage(const std::string& name) {
  console_.SetName(name);
  console_.Next();
  (void)console_.TakeLog();
}

void WizardTest::OpenPrimary(std::string_view primary, std::string_view extension) {
  console_.Offer({});
  ASSERT_EQ(console_.Add(primary, true), S_OK);
  ASSERT_EQ(console_.Add(extension), S_OK);
  ASSERT_TRUE(console_.Show());
}

WizardTest::Lines WizardTest::Finish() {
  console_.Next();
  (void)console_.TakeLog();
  console_.Finish();
  return console_.TakeLog();
}

WizardTest::Lines WizardTest::Controls() { return ControlLines(console_.Page()); }

std::string WizardTest::Text(ControlId id) { return TextOfWindow(Control(id).window()); }

void WizardTest::SavePage(const std::string& name) {
  RedrawWindow(console_.window(), nullptr, nullptr,
               RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
  HandleWaitingMessages();
  // What was drawn comes to the screen while the program waits.
  constexpr DWORD kMoment = 100;
  MsgWaitForMultipleObjects(0, nullptr, FALSE, kMoment, 0);
  SavePicture(console_.window(), name);
  EXPECT_EQ(ClippedControls(console_.Page()), Lines());
}

WizardTest::Lines WizardTest::TakeBoxes() {
  Lines lines;
  for (const ShownBox& box : boxes_.TakeBoxes()) {
    EXPECT_EQ(box.caption, "Pelora Error");
    const char* icon = box.icon == MessageIcon::kError     ? "error: "
                       : box.icon == MessageIcon::kWarning ? "warning: "
                                                           : "plain: ";
    lines.push_back(icon + box.text);
  }
  return lines;
}

}  // namespace pelora::windows::test
