// SPDX-License-Identifier: Apache-2.0
// Every tab on the console in memory.
#include <set>

#include "tests/contract/features_tab_contract.h"
#include "tests/contract/headless_tab_console.h"
#include "tests/contract/same_edits.h"
#include "tests/contract/user_tab_contract.h"
#include "tests/unit/page_bench.h"

namespace pelora::contract {
namespace {

/// The directory in memory comes to stand before the console over it.
struct SampleCompany {
  SampleCompany() { AddSampleCompany(bench.directory); }

  pelora::testing::PageBench bench;
};

class MemoryConsole final : private SampleCompany, public HeadlessTabConsole {
 public:
  MemoryConsole()
      : HeadlessTabConsole({bench.platform, bench.templates(), bench.messages, bench.dialogs,
                            bench.choosers, bench.faulty.plan()}) {}

  void Give(const std::string& name, const TabValues& values) override {
    GiveIn(bench.directory, name, values);
  }
  [[nodiscard]] TabValues Stored(const std::string& name) override {
    return StoredIn(bench.directory, name);
  }
};

std::unique_ptr<TabConsole> MakeConsole() { return std::make_unique<MemoryConsole>(); }

INSTANTIATE_TEST_SUITE_P(Headless, TabContract, EveryTab(&MakeConsole), TabName);
INSTANTIATE_TEST_SUITE_P(Headless, FeaturesTabContract, ::testing::Values(&MakeConsole));
INSTANTIATE_TEST_SUITE_P(Headless, UserTabContract, ::testing::Values(&MakeConsole));

TEST(SameEdits, LeaveWhatEveryFaceLeaves) {
  EXPECT_EQ(PlaySameEdits(*MakeConsole()), SameEditsDump());
}

TEST(TabScripts, ThereIsOneForEveryTab) {
  std::set<std::string> tabs;
  for (const ComponentClass& row : ClassTable()) {
    if (row.name.starts_with("CPropPage")) tabs.emplace(row.name);
  }
  // A list with buttons, whose rows the scripts do not know; it has a contract of its own.
  tabs.erase("CPropPageFeatures");
  std::set<std::string> played;
  for (const TabScript& script : TabScripts()) played.insert(script.component);
  EXPECT_EQ(played, tabs);
}

}  // namespace
}  // namespace pelora::contract
