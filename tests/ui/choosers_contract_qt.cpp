// SPDX-License-Identifier: Apache-2.0
// The console's choosers, with a person in front of them, held to the contract.
#include "hosts/console/choosers/qt_choosers.h"
#include "hosts/console/dialogs/message_box.h"
#include "hosts/console/program/console_platform.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/ldap/create_ldb_directory.h"
#include "hosts/ldap/sample_company.h"
#include "tests/contract/choosers_contract.h"
#include "tests/ui/chooser_user.h"
#include "tests/ui/console_test.h"

namespace pelora::contract {
namespace {

using test::ChooserUser;

class QtHost final : public ChooserHost {
 public:
  QtHost() {
    const std::string file = folder_.File("company.ldb");
    const ldap::StoreStatus made = ldap::CreateLdbDirectory(file, ldap::SampleCompanyLdif());
    EXPECT_TRUE(made.Ok()) << made.text;
    session_ = session::OpenDirectoryFile(file).session;
    choosers_.emplace(*session_->store, session_->open_another,
                      // Long enough that Enter alone begins a search.
                      console::ChooserOptions{.typing_pause = std::chrono::minutes(10)});
    platform_.emplace(session_->service, message_box_, *choosers_, *module_.value);
  }

  [[nodiscard]] const Platform& platform() override { return platform_->platform(); }
  void Pick(const Choice& objects) override {
    scripts_.Add([objects](QWidget& window) { Choose(window, objects); });
  }
  void Find(const Choice& containers) override { Pick(containers); }
  void BrowseLaboratory() override {
    scripts_.Add([](QWidget& window) {
      ChooserUser user(window);
      user.GoToContainer({"Linden-Werke Chemnitz", "Entwicklung", kLaboratory.common_name});
      user.Click("OK");
      if (window.isVisible()) user.Click("Cancel");
    });
  }
  void CancelBrowser() override {
    scripts_.Add([](QWidget& window) { ChooserUser(window).Click("Cancel"); });
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

  pelora::testing::TemporaryFolder folder_;
  resources::ReadResult<resources::ResourceFile> module_ =
      resources::ResourceFile::Read(resources::EmbeddedResourceBytes());
  std::unique_ptr<session::DirectorySession> session_;
  ModalScripts scripts_;
  console::QtMessageBox message_box_;
  std::optional<console::QtChoosers> choosers_;
  std::optional<console::ConsolePlatform> platform_;
};

std::unique_ptr<ChooserHost> MakeHost() { return std::make_unique<QtHost>(); }

INSTANTIATE_TEST_SUITE_P(Qt, ChoosersContract, ::testing::Values(&MakeHost));

}  // namespace
}  // namespace pelora::contract
