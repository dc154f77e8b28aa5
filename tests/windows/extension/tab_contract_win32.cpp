// SPDX-License-Identifier: Apache-2.0
// Every tab of the registered module in a property sheet of the system's, over the sample company
// behind the system's directory functions.
#include <cwchar>
#include <deque>
#include <optional>
#include <utility>

#include "hosts/windows/dialogs/win32_dialog.h"
#include "hosts/windows/values/wide_text.h"
#include "resources/resource.h"
#include "tests/contract/features_tab_contract.h"
#include "tests/contract/same_edits.h"
#include "tests/contract/tab_company.h"
#include "tests/contract/tab_contract.h"
#include "tests/contract/user_tab_contract.h"
#include "tests/windows/support/console.h"
#include "tests/windows/support/message_box_reader.h"
#include "tests/windows/support/page_layout.h"
#include "tests/windows/support/screenshot.h"
#include "tests/windows/support/stand_in_browser.h"
#include "tests/windows/support/stand_in_picker.h"
#include "tests/windows/support/stand_in_query.h"

namespace pelora::contract {
namespace {

using windows::DialogRole;
using windows::Win32Dialog;
using windows::test::BrowserExports;
using windows::test::PickedObjects;
using windows::test::Selection;
using windows::test::WindowPlayer;
using Names = std::vector<std::string>;

class Win32Console final : public TabConsole {
 public:
  Win32Console() {
    if (!windows::test::IsRegistered()) {
      EXPECT_EQ(windows::test::Register(), 0U);
    }
    AddSampleCompany(console_.directory());
  }
  ~Win32Console() override {
    Close();
    EXPECT_EQ(boxes_.boxes().size(), 0U);
    EXPECT_EQ(taken_.size(), 0U);
    EXPECT_EQ(boxes_.pending_scripts(), 0U);
    EXPECT_EQ(console_.directory().live_objects(), 0U);
    EXPECT_EQ(windows::test::CanUnloadNow(), S_OK);
  }

  void Give(const std::string& name, const TabValues& values) override {
    GiveIn(console_.directory(), name, values);
  }
  void Open(const std::string& component, const Names& names) override {
    Close();
    console_.Select(PathsOf(names));
    is_open_ = console_.Open(component);
    ASSERT_TRUE(is_open_);
    page_.emplace(console_.sheet().Page(), DialogRole::kPage);
    player_.emplace(console_.sheet().Page());
  }
  void Close() override {
    page_.reset();
    if (is_open_) console_.Close();
    is_open_ = false;
  }
  [[nodiscard]] IDialog& Page() override { return *page_; }
  [[nodiscard]] DialogPlayer& User() override { return *player_; }

  void Pick(const Names& names) override { picker_.Choose(picked_.emplace(PathsOf(names))); }
  void Find(const Names& names) override { query_.Find(found_.emplace(PathsOf(names))); }
  void Browse(const std::string& name) override {
    browser_.emplace(BrowserExports::kByName);
    browser_->plan().answer = IDOK;
    std::wcscpy(browser_->plan().path, windows::ToWide(TabPathOf(name)).c_str());
  }
  void PlayNext(DialogScript script) override {
    boxes_.PlayNext([script = std::move(script)](HWND dialog) {
      WindowPlayer user(dialog);
      script(user);
    });
  }
  void AwaitBox(std::int32_t answer) override { boxes_.AnswerNext(answer); }
  [[nodiscard]] TabBox TakeBox() override {
    for (windows::test::ShownBox& box : boxes_.TakeBoxes()) {
      std::erase(box.text, '\r');
      taken_.push_back({.caption = std::move(box.caption), .text = std::move(box.text)});
    }
    if (taken_.empty()) return {};
    TabBox box = std::move(taken_.front());
    taken_.pop_front();
    return box;
  }

  [[nodiscard]] bool IsApplyEnabled() const override { return sheet().IsApplyEnabled(); }
  void ClickApply() override { sheet().ClickApply(); }
  void ClickOk() override { sheet().ClickOk(); }
  [[nodiscard]] bool IsOpen() const override { return is_open_ && sheet().IsOpen(); }

  void FailPut(const std::string& attribute, std::size_t nth) override {
    console_.plan().FailAttribute(FaultPoint::kPut, attribute, nth, E_ACCESSDENIED);
  }
  void FailCommit(std::size_t nth) override {
    console_.plan().Fail(FaultPoint::kSetInfo, nth, E_ACCESSDENIED);
  }

  [[nodiscard]] Names FaultsOfSight() override {
    return windows::test::ClippedControls(sheet().Page());
  }
  void SavePicture(const std::string& name) override {
    windows::test::SavePicture(sheet().window(), name);
  }

  [[nodiscard]] TabValues Stored(const std::string& name) override {
    return StoredIn(console_.directory(), name);
  }

 private:
  using FaultPoint = pelora::testing::FaultPoint;

  [[nodiscard]] windows::test::SheetWindow& sheet() const { return console_.sheet(); }
  static Names PathsOf(const Names& names) {
    Names paths;
    for (const std::string& name : names) paths.push_back(TabPathOf(name));
    return paths;
  }

  // What is handed out outlives what hands it out, and that the sheet.
  std::optional<PickedObjects> picked_;
  std::optional<Selection> found_;
  windows::test::StandInPicker picker_;
  windows::test::StandInQuery query_;
  std::optional<windows::test::StandInBrowser> browser_;
  mutable windows::test::Console console_;
  windows::test::MessageBoxReader boxes_;
  std::deque<TabBox> taken_;
  bool is_open_ = false;
  std::optional<Win32Dialog> page_;
  std::optional<WindowPlayer> player_;
};

std::unique_ptr<TabConsole> MakeConsole() { return std::make_unique<Win32Console>(); }

INSTANTIATE_TEST_SUITE_P(Win32, TabContract, EveryTab(&MakeConsole), TabName);
INSTANTIATE_TEST_SUITE_P(Win32, FeaturesTabContract, ::testing::Values(&MakeConsole));
INSTANTIATE_TEST_SUITE_P(Win32, UserTabContract, ::testing::Values(&MakeConsole));

TEST(SameEdits, LeaveWhatEveryFaceLeaves) {
  EXPECT_EQ(PlaySameEdits(*MakeConsole()), SameEditsDump());
}

INSTANTIATE_TEST_SUITE_P(Win32, TabLooks, EveryTab(&MakeConsole), TabName);

}  // namespace
}  // namespace pelora::contract
