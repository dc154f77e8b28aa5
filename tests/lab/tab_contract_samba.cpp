// SPDX-License-Identifier: Apache-2.0
// Every tab on a directory server, read back with the domain's own search tool.
#include "tests/contract/features_tab_contract.h"
#include "tests/contract/headless_tab_console.h"
#include "tests/contract/user_tab_contract.h"
#include "tests/lab/domain_bench.h"

namespace pelora::lab {
namespace {

using contract::EveryTab;
using contract::FeaturesTabContract;
using contract::HeadlessTabConsole;
using contract::TabConsole;
using contract::TabContract;
using contract::TabName;
using contract::TabScript;
using contract::TabValues;
using contract::UserTabContract;
using Names = std::vector<std::string>;

class DomainConsole final : public DomainBench, public HeadlessTabConsole {
 public:
  DomainConsole()
      : HeadlessTabConsole({bench.platform, bench.templates(), bench.messages, bench.dialogs,
                            bench.choosers, faulty.plan()}) {
    static_cast<void>(DomainCompany::Shared());
  }
  ~DomainConsole() override { DomainCompany::Shared().Restore(); }

  void Give(const std::string& name, const TabValues& values) override {
    DomainCompany::Shared().Give(name, values);
  }
  void Open(const std::string& component, const Names& names) override {
    for (const std::string& name : names) DomainCompany::Shared().Remember(name);
    HeadlessTabConsole::Open(component, names);
  }

  [[nodiscard]] std::string Base() const override { return DomainCompany::Base(); }
  [[nodiscard]] TabValues Stored(const std::string& name) override { return StoredInDomain(name); }
  // A directory's values are a set.
  [[nodiscard]] bool KeepsOrder() const override { return false; }
};

std::unique_ptr<TabConsole> MakeConsole() { return std::make_unique<DomainConsole>(); }

INSTANTIATE_TEST_SUITE_P(Samba, TabContract, EveryTab(&MakeConsole), TabName);
INSTANTIATE_TEST_SUITE_P(Samba, FeaturesTabContract, ::testing::Values(&MakeConsole));
INSTANTIATE_TEST_SUITE_P(Samba, UserTabContract, ::testing::Values(&MakeConsole));

TEST(TabsOfADomain, SendUntouchedOnlyWhatIsAlwaysWritten) {
  for (const TabScript& published : contract::TabScripts()) {
    SCOPED_TRACE(published.component);
    const TabScript script = Rebased(published, DomainCompany::Base());
    const std::string& object = script.objects.front();
    DomainConsole console;
    console.Open(script.component, {object});
    Names expected = {"read " + object};
    if (!script.always.empty()) expected.push_back("modify " + object + ":");
    for (const contract::TabWrite& write : script.always) expected.back() += " " + write.attribute;
    console.store.log.clear();
    console.ClickOk();
    EXPECT_EQ(console.store.log, expected);
    EXPECT_EQ(console.bench.Boxes(), "");
  }
}

TEST(TabsOfADomain, AGroupWithoutItsOnlyAddressKeepsItsMail) {
  const std::string group =
      "CN=Vertrieb Alle,OU=Gruppen,OU=Linden-Werke Chemnitz," + DomainCompany::Base();
  DomainConsole console;
  const TabValues before = console.Stored(group);
  console.Open("CPropPageDistlist", {group});
  console.User().ClickListRow(IDC_EMAIL_LIST, 0);
  console.User().Click(IDC_EMAIL_DELETE);
  console.store.log.clear();
  console.ClickApply();
  EXPECT_EQ(console.store.log, (Names{"read " + group, "modify " + group + ": otherMailbox"}));
  EXPECT_EQ(console.bench.Boxes(), "");
  EXPECT_EQ(console.Stored(group), before);
}

}  // namespace
}  // namespace pelora::lab
