// SPDX-License-Identifier: Apache-2.0
// Who looks on at a page, and what of it he is told.
#include "hosts/session/watched_page.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "hosts/headless/headless_dialog.h"
#include "hosts/resources/resource_file.h"
#include "resources/resource.h"

namespace pelora::session {
namespace {

using ::testing::ElementsAre;

/// A page that fills its field when it is told to apply.
class LatePage final : public PropSheetPage, public IDialogController {
 public:
  [[nodiscard]] DialogId Template() const override { return IDD_PROPPAGE_USER; }
  [[nodiscard]] std::string Title() const override { return {}; }
  [[nodiscard]] IDialogController& Controller() override { return *this; }

  std::int32_t OnInitDialog(IDialog& dialog) override {
    dialog_ = &dialog;
    return 0;
  }
  std::int32_t OnCommand(ControlId /*id*/, ControlNotification /*told*/) override { return 0; }
  std::int32_t OnPageNotification(PageNotification told) override {
    if (told == PageNotification::kApply) dialog_->SetText(IDC_QUOTA_HARD, "0");
    return 0;
  }
  void OnDestroy() override {}

 private:
  IDialog* dialog_ = nullptr;
};

class WatchedPageTest : public ::testing::Test {
 protected:
  WatchedPageTest() { dialog_.Open(); }

  [[nodiscard]] std::vector<std::string> TakeTold() { return std::exchange(told_, {}); }

  std::vector<std::string> told_;
  WatchedPage page_{
      std::make_unique<LatePage>(),
      {.on_loaded = [this](IDialog&) { told_.emplace_back("loaded"); },
       .on_command = [this](ControlId id) { told_.push_back("command " + std::to_string(id)); },
       .on_handled = [this] { told_.emplace_back("handled"); },
       .on_apply = [this](IDialog&) { told_.emplace_back("apply"); },
       .on_applied = [this] { told_.emplace_back("applied"); },
       .on_refused = [this](IDialog&, IDialogController&) { told_.emplace_back("refused"); },
       .on_gone = [this] { told_.emplace_back("gone"); }}};
  HeadlessDialog dialog_{resources::ResourceFile::Read(resources::EmbeddedResourceBytes())
                             .value.value()
                             .Dialog(IDD_PROPPAGE_USER)
                             .value.value(),
                         page_.Controller()};
};

TEST_F(WatchedPageTest, WhatAPersonDoesIsToldBeforeAndAfterThePageHearsOfIt) {
  EXPECT_THAT(TakeTold(), ElementsAre("loaded"));
  dialog_.SetText(IDC_QUOTA_WARN, "7");
  EXPECT_THAT(TakeTold(), ElementsAre("command " + std::to_string(IDC_QUOTA_WARN), "handled"));
}

TEST_F(WatchedPageTest, WhatAPageFillsInOnItsWayToBeingAppliedIsNobodysDoing) {
  (void)TakeTold();
  EXPECT_EQ(page_.Controller().OnPageNotification(PageNotification::kApply), kPageApplied);
  EXPECT_EQ(dialog_.Text(IDC_QUOTA_HARD), "0");
  EXPECT_THAT(TakeTold(), ElementsAre("apply", "applied"));
  dialog_.SetText(IDC_QUOTA_HARD, "1");
  EXPECT_EQ(TakeTold().size(), 2U) << "afterwards it is told again";
}

}  // namespace
}  // namespace pelora::session
