// SPDX-License-Identifier: Apache-2.0
// The console's choosers, with a person in front of them, held to the contract.
#include "hosts/console/choosers/qt_choosers.h"
#include "hosts/console/dialogs/message_box.h"
#include "hosts/console/program/console_platform.h"
#include "hosts/console/text/qt_text.h"
#include "tests/contract/choosers_contract.h"
#include "tests/ui/chooser_user.h"
#include "tests/ui/console_test.h"

namespace pelora::contract {
namespace {

using test::ChooserUser;

class QtHost final : public ChooserHost {
 public:
  QtHost() {
    choosers_.emplace(*company_.session().store, company_.session().open_another,
                      // Long enough that Enter alone begins a search.
                      console::ChooserOptions{.typing_pause = std::chrono::minutes(10)});
    platform_.emplace(company_.session().service, message_box_, *choosers_, company_.module());
  }

  [[nodiscard]] const Platform& platform() override { return platform_->platform(); }
  void Pick(const Choice& objects) override {
    company_.modal_scripts().Add([objects](QWidget& window) { Choose(window, objects); });
  }
  void Find(const Choice& containers) override { Pick(containers); }
  void BrowseLaboratory() override {
    company_.modal_scripts().Add([](QWidget& window) {
      ChooserUser user(window);
      user.GoToContainer({"Linden-Werke Chemnitz", "Entwicklung", kLaboratory.common_name});
      user.Click("OK");
      if (window.isVisible()) user.Click("Cancel");
    });
  }
  void CancelBrowser() override {
    company_.modal_scripts().Add([](QWidget& window) { ChooserUser(window).Click("Cancel"); });
  }

 private:
  /// All but the last object go through the list of chosen ones.
  static void Choose(QWidget& window, const Choice& objects) {
    ChooserUser user(window);
    if (objects.empty()) return user.Click("Cancel");
    for (const ChooserObject& object : objects) {
      user.Search(object.typed);
      user.ClickRow(object.common_name);
      user.Click(&object == &objects.back() ? "OK" : "Add");
    }
  }

  test::OpenCompany company_;
  console::QtMessageBox message_box_;
  std::optional<console::QtChoosers> choosers_;
  std::optional<console::ConsolePlatform> platform_;
};

std::unique_ptr<ChooserHost> MakeHost() { return std::make_unique<QtHost>(); }

INSTANTIATE_TEST_SUITE_P(Qt, ChoosersContract, ::testing::Values(&MakeHost));

}  // namespace
}  // namespace pelora::contract
