// SPDX-License-Identifier: Apache-2.0
// What a dialog procedure answers: which messages reach the controller, and that its answers become
// the messages' results.
#include "hosts/windows/dialogs/dialog_host.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/contract/contract_ids.h"

namespace pelora::windows {
namespace {

/// Answers everything with one number, and keeps what it was told.
class AnsweringController final : public IDialogController {
 public:
  std::int32_t answer = 0;

  [[nodiscard]] std::vector<std::string> TakeTold() { return std::exchange(told_, {}); }

  std::int32_t OnInitDialog(IDialog& /*dialog*/) override { return Tell("init"); }
  std::int32_t OnCommand(ControlId id, ControlNotification notification) override {
    return Tell("command " + std::to_string(id) + " " +
                std::to_string(static_cast<unsigned int>(notification)));
  }
  std::int32_t OnPageNotification(PageNotification code) override {
    return Tell("page " + std::to_string(static_cast<std::int32_t>(code)));
  }
  void OnDestroy() override { (void)Tell("destroy"); }

 private:
  std::int32_t Tell(std::string line) {
    told_.push_back(std::move(line));
    return answer;
  }

  std::vector<std::string> told_;
};

class DialogMessageTest : public ::testing::Test {
 protected:
  DialogMessageTest() {
    EXPECT_EQ(Send(WM_INITDIALOG), 0);
    (void)controller_.TakeTold();
  }
  ~DialogMessageTest() override { DestroyWindow(sheet_); }

  INT_PTR Send(UINT message, WPARAM wide = 0, LPARAM narrow = 0) {
    return host_.OnMessage(window_, message, wide, narrow);
  }
  INT_PTR Notify(HWND from, UINT code) {
    NMHDR notification = {from, 0, code};
    return Send(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&notification));
  }
  [[nodiscard]] LRESULT Result() const { return GetWindowLongPtrW(window_, DWLP_MSGRESULT); }

  AnsweringController controller_;
  DialogHost host_{controller_, DialogRole::kPage};
  HWND sheet_ = CreateWindowExW(0, L"Static", L"Sheet", WS_OVERLAPPEDWINDOW, 0, 0, 200, 100,
                                nullptr, nullptr, nullptr, nullptr);
  HWND window_ = CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_CONTRACT_MODAL),
                                    sheet_, nullptr, 0);
};

using Told = std::vector<std::string>;

TEST_F(DialogMessageTest, TheStatusOfTheLoadingIsTheResultOfTheFirstMessage) {
  for (const HRESULT status : {S_OK, S_FALSE, E_ACCESSDENIED}) {
    AnsweringController controller;
    controller.answer = status;
    DialogHost host(controller, DialogRole::kPage);
    EXPECT_EQ(host.OnMessage(window_, WM_INITDIALOG, 0, 0), status);
    EXPECT_EQ(controller.TakeTold(), Told{"init"});
  }
}

TEST_F(DialogMessageTest, NothingIsToldBeforeTheDialogStandsOrAfterItWent) {
  AnsweringController controller;
  DialogHost host(controller, DialogRole::kPage);
  EXPECT_EQ(host.OnMessage(window_, WM_COMMAND, MAKEWPARAM(5, BN_CLICKED), 0), FALSE);
  EXPECT_EQ(host.OnMessage(window_, WM_DESTROY, 0, 0), FALSE);
  EXPECT_EQ(controller.TakeTold(), Told());
  EXPECT_EQ(Send(WM_DESTROY), FALSE);
  EXPECT_EQ(Send(WM_COMMAND, MAKEWPARAM(5, BN_CLICKED)), FALSE);
  EXPECT_EQ(Notify(window_, PSN_APPLY), FALSE);
  EXPECT_EQ(controller_.TakeTold(), Told{"destroy"});
}

TEST_F(DialogMessageTest, ClicksSelectionsAndEditsAreToldAndNoOtherNotification) {
  controller_.answer = 3;
  for (const int code : {BN_CLICKED, LBN_SELCHANGE, EN_CHANGE}) {
    EXPECT_EQ(Send(WM_COMMAND, MAKEWPARAM(5, code)), TRUE);
    EXPECT_EQ(Result(), 3);
  }
  for (const int code : {LBN_DBLCLK, EN_SETFOCUS, EN_KILLFOCUS, EN_UPDATE}) {
    EXPECT_EQ(Send(WM_COMMAND, MAKEWPARAM(5, code)), FALSE);
  }
  EXPECT_EQ(controller_.TakeTold(), (Told{"command 5 0", "command 5 1", "command 5 768"}));
}

TEST_F(DialogMessageTest, TheSheetsNotificationsAreAnsweredThroughTheWindow) {
  controller_.answer = 2;
  EXPECT_EQ(Notify(window_, PSN_APPLY), TRUE);
  EXPECT_EQ(Result(), 2);
  EXPECT_EQ(Notify(sheet_, PSN_KILLACTIVE), TRUE);
  EXPECT_EQ(controller_.TakeTold(), (Told{"page -202", "page -201"}));
}

TEST_F(DialogMessageTest, OtherNotificationsAndOtherSendersAreLeftToTheSystem) {
  EXPECT_EQ(Notify(GetDesktopWindow(), PSN_APPLY), FALSE);
  for (const UINT code : {PSN_HELP, PSN_QUERYINITIALFOCUS, PSN_TRANSLATEACCELERATOR}) {
    EXPECT_EQ(Notify(window_, code), FALSE) << static_cast<int>(code);
  }
  EXPECT_EQ(controller_.TakeTold(), Told());
}

TEST_F(DialogMessageTest, ADialogOfItsOwnHasNoSheet) {
  AnsweringController controller;
  DialogHost host(controller, DialogRole::kModal);
  EXPECT_EQ(host.OnMessage(window_, WM_INITDIALOG, 0, 0), 0);
  (void)controller.TakeTold();
  NMHDR notification = {window_, 0, PSN_APPLY};
  EXPECT_EQ(host.OnMessage(window_, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&notification)), FALSE);
  EXPECT_EQ(controller.TakeTold(), Told());
}

}  // namespace
}  // namespace pelora::windows
