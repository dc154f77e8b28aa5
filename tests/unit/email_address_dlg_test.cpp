// SPDX-License-Identifier: Apache-2.0
#include "pages/email_address_dlg.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "resources/resource.h"
#include "tests/unit/page_bench.h"

namespace pelora {
namespace {

using testing::PageBench;

class EmailAddressDlgTest : public ::testing::Test {
 protected:
  PageBench bench_;
  CEmailAddressDlg empty_{bench_.platform, ""};
  CEmailAddressDlg filled_{bench_.platform, "ada@x"};
};

TEST_F(EmailAddressDlgTest, StandsOnItsTemplate) {
  const resources::DialogTemplate described = bench_.Template(107);
  EXPECT_EQ(described.title, "EmailAddress");
  std::vector<std::string> controls;
  for (const resources::DialogItem& item : described.items) {
    controls.push_back(std::to_string(item.id) + " " + item.window_class + " " + item.title);
  }
  EXPECT_THAT(controls, ::testing::ElementsAre("4294967295 STATIC Emailaddress:", "203 EDIT ",
                                               "1 BUTTON OK", "2 BUTTON Cancel"));
  constexpr std::uint32_t kButtonKind = 0xF;
  EXPECT_EQ(described.items.at(2).style & kButtonKind, 1U) << "OK is the default button";
  EXPECT_EQ(described.items.at(3).style & kButtonKind, 0U);
}

TEST_F(EmailAddressDlgTest, ShowsTheAddressGivenAndGivesBackTheOneTyped) {
  bench_.dialogs.PlayNext([](HeadlessUser& user) {
    EXPECT_EQ(user.dialog().Text(IDC_EMAIL_ADDRESS), "ada@x");
    EXPECT_EQ(user.TypeText(IDC_EMAIL_ADDRESS, ".org"), UserAnswer::kDone);
    EXPECT_EQ(user.Click(1), UserAnswer::kDone);
  });
  EXPECT_EQ(filled_.Show(bench_.some_dialog()), 1);
  EXPECT_EQ(filled_.address(), "ada@x.org");
  ASSERT_EQ(bench_.dialogs.records().size(), 1U);
  EXPECT_EQ(bench_.dialogs.records().front().dialog, 107);
  EXPECT_EQ(bench_.dialogs.records().front().owner, bench_.some_dialog());
}

TEST_F(EmailAddressDlgTest, EnterIsOk) {
  bench_.dialogs.PlayNext([](HeadlessUser& user) {
    user.TypeText(IDC_EMAIL_ADDRESS, "bob@x");
    EXPECT_EQ(user.PressEnter(), UserAnswer::kDone);
  });
  EXPECT_EQ(empty_.Show(nullptr), 1);
  EXPECT_EQ(empty_.address(), "bob@x");
}

TEST_F(EmailAddressDlgTest, AnEmptyAddressIsWrongAndTheDialogStays) {
  bench_.dialogs.PlayNext([this](HeadlessUser& user) {
    user.Click(1);
    EXPECT_FALSE(user.dialog().Result());
    ASSERT_EQ(bench_.messages.records().size(), 1U);
    const HeadlessMessageBox::Record& box = bench_.messages.records().front();
    EXPECT_EQ(box.message.text, "Wrong emailaddress");
    EXPECT_FALSE(box.message.caption) << "the system's own caption";
    EXPECT_EQ(box.message.icon, MessageIcon::kNone);
    EXPECT_EQ(box.message.buttons, MessageButtons::kOk);
    EXPECT_EQ(box.owner, &user.dialog());
    user.TypeText(IDC_EMAIL_ADDRESS, "bob@x");
    user.Click(1);
  });
  EXPECT_EQ(empty_.Show(nullptr), 1);
  EXPECT_EQ(empty_.address(), "bob@x");
  EXPECT_EQ(bench_.messages.records().size(), 1U);
}

TEST_F(EmailAddressDlgTest, BlanksAreAnAddress) {
  bench_.dialogs.PlayNext([](HeadlessUser& user) {
    user.TypeText(IDC_EMAIL_ADDRESS, "  ");
    user.Click(1);
  });
  EXPECT_EQ(empty_.Show(nullptr), 1);
  EXPECT_EQ(empty_.address(), "  ");
  EXPECT_TRUE(bench_.messages.records().empty());
}

TEST_F(EmailAddressDlgTest, TheCaseTypedIsKept) {
  bench_.dialogs.PlayNext([](HeadlessUser& user) {
    user.TypeText(IDC_EMAIL_ADDRESS, "Jürgen.MÜLLER@X");
    user.Click(1);
  });
  EXPECT_EQ(empty_.Show(nullptr), 1);
  EXPECT_EQ(empty_.address(), "Jürgen.MÜLLER@X");
}

TEST_F(EmailAddressDlgTest, CancelKeepsTheAddressGiven) {
  bench_.dialogs.PlayNext([](HeadlessUser& user) {
    user.TypeText(IDC_EMAIL_ADDRESS, ".org");
    user.Click(2);
  });
  EXPECT_EQ(filled_.Show(nullptr), 2);
  EXPECT_EQ(filled_.address(), "ada@x");
}

TEST_F(EmailAddressDlgTest, ClosingTheWindowIsCancel) {
  bench_.dialogs.PlayNext([](HeadlessUser& user) { user.CloseWindow(); });
  EXPECT_EQ(filled_.Show(nullptr), 2);
  EXPECT_EQ(filled_.address(), "ada@x");
}

}  // namespace
}  // namespace pelora
