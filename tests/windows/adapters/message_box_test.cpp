// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "hosts/windows/dialogs/win32_dialog.h"
#include "hosts/windows/dialogs/win32_message_box.h"
#include "platform/dialog_controller.h"
#include "tests/windows/support/message_box_reader.h"

namespace pelora::windows {
namespace {

using test::MessageBoxReader;
using test::ShownBox;
using ::testing::ElementsAre;

TEST(Win32MessageBox, ShowsCaptionTextIconAndButton) {
  MessageBoxReader reader;
  const Message message = {.text = "Unknown error occured\r\n\r\nError code: 0X80004005",
                           .caption = "Pelora Error",
                           .icon = MessageIcon::kError};
  EXPECT_EQ(Win32MessageBox().Show(nullptr, message), kDialogOk);
  EXPECT_THAT(reader.boxes(),
              ElementsAre(ShownBox{.caption = "Pelora Error",
                                   .text = "Unknown error occured\r\n\r\nError code: 0X80004005",
                                   .icon = MessageIcon::kError,
                                   .buttons = {"OK"},
                                   .owner = ""}));
}

TEST(Win32MessageBox, AsksAndGivesTheAnswer) {
  MessageBoxReader reader;
  const Message message = {.text = "Really?",
                           .caption = "Grüße 漢字",
                           .icon = MessageIcon::kWarning,
                           .buttons = MessageButtons::kYesNo};
  EXPECT_EQ(Win32MessageBox().Show(nullptr, message), kDialogYes);
  EXPECT_THAT(reader.boxes(), ElementsAre(ShownBox{.caption = "Grüße 漢字",
                                                   .text = "Really?",
                                                   .icon = MessageIcon::kWarning,
                                                   .buttons = {"Yes", "No"},
                                                   .owner = ""}));
}

TEST(Win32MessageBox, WithoutACaptionTheSystemsOwnStands) {
  MessageBoxReader reader;
  Win32MessageBox().Show(nullptr, {.text = "plain", .caption = std::nullopt});
  ASSERT_EQ(reader.boxes().size(), 1U);
  EXPECT_EQ(reader.boxes()[0].caption, "Error");
  EXPECT_EQ(reader.boxes()[0].icon, MessageIcon::kNone);
}

TEST(Win32MessageBox, IsModalToItsOwner) {
  const HWND window = CreateWindowExW(0, L"Static", L"Owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0,
                                      0, 200, 100, nullptr, nullptr, nullptr, nullptr);
  Win32Dialog dialog(window, DialogRole::kModal);
  MessageBoxReader reader;
  Win32MessageBox().Show(&dialog, {.text = "owned", .caption = "Box"});
  DestroyWindow(window);
  ASSERT_EQ(reader.boxes().size(), 1U);
  EXPECT_EQ(reader.boxes()[0].owner, "Owner");
}

}  // namespace
}  // namespace pelora::windows
