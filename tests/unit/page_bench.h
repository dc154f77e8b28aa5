// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/fake_directory.h"
#include "tests/support/fault_directory.h"
#include "tests/support/host_bench.h"
#include "tests/support/standing_page.h"

namespace pelora::testing {

/// A directory in memory whose calls can be made to fail.
struct FaultyDirectory {
  [[nodiscard]] FaultPlan& faults() { return faulty.plan(); }

  FakeDirectory directory;
  FaultDirectory faulty{directory};
};

/// All that a page is run on in a unit test.
class PageBench : public FaultyDirectory, public HostBench {
 public:
  PageBench() : HostBench(faulty) {}

  /// A dialog to stand for the one that owns another.
  [[nodiscard]] IDialog* some_dialog() { return &owner_; }

  /// The calls that stage and commit changes.
  [[nodiscard]] std::vector<std::string> Writes() const {
    using enum DirectoryCall::Kind;
    return directory.Log({kPut, kPutEx, kSetInfo});
  }

 private:
  class Idle final : public IDialogController {
   public:
    std::int32_t OnInitDialog(IDialog& /*dialog*/) override { return 0; }
    std::int32_t OnCommand(ControlId /*id*/, ControlNotification /*notification*/) override {
      return 0;
    }
    void OnDestroy() override {}
  };

  Idle idle_;
  HeadlessDialog owner_{resources::DialogTemplate{}, idle_};
};

/// A page that stands open on objects of a bench, from which nothing has been asked since.
template <class Page>
class OpenPage : public StandingPage<Page> {
 public:
  /// Takes over the one reference of `page`.
  OpenPage(PageBench& bench, Page* page, const resources::DialogTemplate& described,
           const std::vector<std::string>& paths)
      : StandingPage<Page>(page, described, paths) {
    EXPECT_EQ(this->initialized(), S_OK);
    EXPECT_EQ(this->opened(), S_OK);
    bench.directory.ClearCalls();
  }
};

}  // namespace pelora::testing
