// SPDX-License-Identifier: Apache-2.0
// The system's choosers behind their ports, with stand-ins in the system's place, held to the
// contract.
#include <cwchar>
#include <deque>
#include <optional>

#include "hosts/windows/values/wide_text.h"
#include "hosts/windows/windows_platform.h"
#include "tests/contract/chooser_objects.h"
#include "tests/contract/choosers_contract.h"
#include "tests/windows/provider/ldap_namespace.h"
#include "tests/windows/support/stand_in_browser.h"
#include "tests/windows/support/stand_in_picker.h"
#include "tests/windows/support/stand_in_query.h"

namespace pelora::contract {
namespace {

using windows::test::PickedObjects;
using windows::test::Selection;

class Win32Host final : public ChooserHost {
 public:
  Win32Host() { AddChooserObjects(directory_); }
  ~Win32Host() override {
    EXPECT_EQ(picker_.references(), 0U);
    EXPECT_EQ(query_.references(), 0U);
    for (const PickedObjects& picked : picked_) EXPECT_EQ(picked.references(), 0U);
    for (const Selection& found : found_) EXPECT_EQ(found.references(), 0U);
    EXPECT_EQ(directory_.live_objects(), 0U);
  }

  [[nodiscard]] const Platform& platform() override { return platform_.platform(); }
  void Pick(const Choice& objects) override {
    if (!objects.empty()) picker_.Choose(picked_.emplace_back(ChooserPathsOf(objects)));
  }
  void Find(const Choice& containers) override {
    if (!containers.empty()) query_.Find(found_.emplace_back(ContainerPathsOf(containers)));
  }
  void BrowseLaboratory() override { PlanBrowser(IDOK); }
  void CancelBrowser() override { PlanBrowser(IDCANCEL); }

 private:
  void PlanBrowser(int answer) {
    if (!browser_) browser_.emplace(windows::test::BrowserExports::kByName);
    browser_->plan().answer = answer;
    const std::string path = ContainerPathsOf({kLaboratory}).front();
    std::wcscpy(browser_->plan().path, windows::ToWide(path).c_str());
  }

  // What is handed out outlives what hands it out; addresses stay in a deque.
  std::deque<PickedObjects> picked_;
  std::deque<Selection> found_;
  windows::test::StandInPicker picker_;
  windows::test::StandInQuery query_;
  std::optional<windows::test::StandInBrowser> browser_;
  pelora::testing::FakeDirectory directory_;
  windows::test::LdapNamespace provider_{directory_};
  windows::WindowsPlatform platform_{GetModuleHandleW(nullptr)};
};

std::unique_ptr<ChooserHost> MakeHost() { return std::make_unique<Win32Host>(); }

INSTANTIATE_TEST_SUITE_P(Win32, ChoosersContract, ::testing::Values(&MakeHost));

}  // namespace
}  // namespace pelora::contract
