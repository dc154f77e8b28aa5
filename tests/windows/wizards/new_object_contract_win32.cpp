// SPDX-License-Identifier: Apache-2.0
// The registered module's wizard pages in wizards of the system's, over the sample company behind
// the system's directory functions.
#include <cwchar>
#include <deque>
#include <optional>
#include <utility>

#include "hosts/windows/dialogs/win32_dialog.h"
#include "hosts/windows/values/wide_text.h"
#include "server/console_registration.h"
#include "tests/contract/new_object_contract.h"
#include "tests/contract/tab_company.h"
#include "tests/windows/support/message_box_reader.h"
#include "tests/windows/support/stand_in_browser.h"
#include "tests/windows/support/stand_in_picker.h"
#include "tests/windows/wizards/wizard_console.h"

namespace pelora::contract {
namespace {

using windows::DialogRole;
using windows::Win32Dialog;
using windows::test::BrowserExports;
using windows::test::PickedObjects;
using windows::test::WindowPlayer;
using windows::test::WizardConsole;

class Win32Wizards final : public NewObjectConsole {
 public:
  Win32Wizards() {
    if (!windows::test::IsRegistered()) {
      EXPECT_EQ(windows::test::Register(), 0U);
    }
    AddSampleCompany(console_.directory());
    console_.Offer({pelora::IID_IADsUser, pelora::IID_IADsOU, pelora::IID_IADsContainer});
  }
  ~Win32Wizards() override {
    console_.Close();
    EXPECT_EQ(boxes_.boxes().size() + taken_.size(), 0U);
    EXPECT_EQ(console_.directory().live_objects(), 0U);
    EXPECT_EQ(console_.site().references(), 0U);
    EXPECT_EQ(windows::test::CanUnloadNow(), S_OK);
  }

  void Open(const std::string& class_name) override {
    page_.reset();
    console_.Close();
    for (const ConsoleRole role :
         {ConsoleRole::kCreationWizard, ConsoleRole::kCreationWizardExtension}) {
      for (const ConsoleRegistration& row : ConsoleRegistrations()) {
        if (row.object_class != class_name || row.role != role) continue;
        const bool is_primary = role == ConsoleRole::kCreationWizard;
        EXPECT_EQ(console_.Add(row.component_class, is_primary), S_OK);
      }
    }
    EXPECT_TRUE(console_.Show());
  }
  void SetName(const std::string& name) override { console_.SetName(name); }
  [[nodiscard]] IDialog& Page() override {
    return page_.emplace(console_.Page(), DialogRole::kPage);
  }
  [[nodiscard]] DialogPlayer& User() override { return player_.emplace(console_.Page()); }

  [[nodiscard]] bool IsNextEnabled() const override { return console_.IsNextEnabled(); }
  void Next() override { console_.Next(); }
  void Back() override { console_.Back(); }
  void Finish() override { console_.Finish(); }
  [[nodiscard]] bool IsOpen() const override { return console_.IsOpen(); }
  [[nodiscard]] std::string Summary() override {
    std::string text;
    for (const std::string& part : console_.summaries()) text += (text.empty() ? "" : "\n") + part;
    std::erase(text, '\r');
    return text;
  }

  void Pick(const std::string& name) override {
    picker_.Choose(picked_.emplace(std::vector<std::string>{TabPathOf(name)}));
  }
  void Browse(const std::string& name) override {
    browser_.emplace(BrowserExports::kByName);
    browser_->plan().answer = IDOK;
    std::wcscpy(browser_->plan().path, windows::ToWide(TabPathOf(name)).c_str());
  }
  // Every box is read and confirmed.
  void AwaitBox() override {}
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

  void FailCommit() override {
    console_.plan().Fail(pelora::testing::FaultPoint::kSetInfo, 1, E_ACCESSDENIED);
  }
  [[nodiscard]] std::optional<TabValues> Stored(const std::string& name) override {
    const std::string path = WizardConsole::PathOf(name);
    if (!console_.directory().Values(path)) return std::nullopt;
    return StoredAt(console_.directory(), path);
  }

 private:
  // What is handed out outlives what hands it out, and that the wizard.
  std::optional<PickedObjects> picked_;
  windows::test::StandInPicker picker_;
  std::optional<windows::test::StandInBrowser> browser_;
  WizardConsole console_;
  windows::test::MessageBoxReader boxes_;
  std::deque<TabBox> taken_;
  std::optional<Win32Dialog> page_;
  std::optional<WindowPlayer> player_;
};

std::unique_ptr<NewObjectConsole> MakeWizards() { return std::make_unique<Win32Wizards>(); }

INSTANTIATE_TEST_SUITE_P(Win32, NewObjectContract, ::testing::Values(&MakeWizards));

}  // namespace
}  // namespace pelora::contract
