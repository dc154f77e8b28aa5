// SPDX-License-Identifier: Apache-2.0
// New-object wizards in memory.
#include "tests/contract/headless_new_object_console.h"
#include "tests/unit/page_bench.h"

namespace pelora::contract {
namespace {

/// The directory in memory comes to stand before the console over it.
struct SampleCompany {
  SampleCompany() { AddSampleCompany(bench.directory); }

  pelora::testing::PageBench bench;
};

class MemoryWizards final : private SampleCompany, public HeadlessNewObjectConsole {
 public:
  MemoryWizards()
      : HeadlessNewObjectConsole({bench.platform, bench.templates(), bench.messages, bench.choosers,
                                  bench.faulty.plan()}) {}

  [[nodiscard]] std::optional<TabValues> Stored(const std::string& name) override {
    if (!bench.directory.Values(TabPathOf(NameOf(name)))) return std::nullopt;
    return StoredIn(bench.directory, NameOf(name));
  }

 private:
  static std::string NameOf(const std::string& name) { return "CN=" + name + "," + sample::kSales; }
  [[nodiscard]] Ref<IADs> MakeObject(const std::string& /*class_name*/,
                                     const std::string& name) override {
    return bench.faulty.Wrap(bench.directory.MakeNewObject(
        TabPathOf(NameOf(name)), {IID_IADsUser, IID_IADsOU, IID_IADsContainer}));
  }
};

std::unique_ptr<NewObjectConsole> MakeWizards() { return std::make_unique<MemoryWizards>(); }

INSTANTIATE_TEST_SUITE_P(Headless, NewObjectContract, ::testing::Values(&MakeWizards));

}  // namespace
}  // namespace pelora::contract
