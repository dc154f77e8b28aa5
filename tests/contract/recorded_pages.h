// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/shell_extension.h"
#include "tests/contract/contract_ids.h"
#include "tests/contract/recording_controller.h"

namespace pelora::contract {

// The notifications as a recording controller writes them down.
inline constexpr const char* kSetActive = "page -200";
inline constexpr const char* kKillActive = "page -201";
inline constexpr const char* kApply = "page -202";
inline constexpr const char* kReset = "page -203";
inline constexpr const char* kWizardBack = "page -206";
inline constexpr const char* kWizardNext = "page -207";
inline constexpr const char* kQueryCancel = "page -209";

/// What a test keeps of a page: its controller, and whether the page has been destroyed.
struct PageRecord {
  RecordingController controller;
  bool destroyed = false;
  /// What the controller had been told by then.
  std::vector<std::string> events_at_destruction;
};

class RecordedPage final : public PropSheetPage {
 public:
  RecordedPage(PageRecord& record, DialogId dialog, std::string title)
      : record_(record), dialog_(dialog), title_(std::move(title)) {}
  ~RecordedPage() override {
    EXPECT_FALSE(record_.destroyed);
    record_.destroyed = true;
    record_.events_at_destruction = record_.controller.events();
  }

  [[nodiscard]] DialogId Template() const override { return dialog_; }
  [[nodiscard]] std::string Title() const override { return title_; }
  [[nodiscard]] IDialogController& Controller() override { return record_.controller; }

 private:
  PageRecord& record_;
  DialogId dialog_;
  std::string title_;
};

/// Answer to `kSetActive` and to the wizard's ways out of a page: not now, not that way.
inline constexpr std::int32_t kDeclines = -1;
/// Answer to `kApply`: the page has not applied and wants to be shown.
inline constexpr std::int32_t kInvalidShow = 1;

/// Answers one notification with a code and all others with 0.
inline std::function<std::int32_t(PageNotification)> Answer(PageNotification asked,
                                                            std::int32_t answer) {
  return [=](PageNotification notification) { return notification == asked ? answer : 0; };
}

/// Three pages of the contract's templates; the third is made from the first one's. `Host` is a
/// sheet or wizard that is not shown yet.
struct ThreePages {
  template <class Host>
  explicit ThreePages(Host& host) {
    EXPECT_TRUE(host.AddPage(std::make_unique<RecordedPage>(first, IDD_CONTRACT_PAGE, "")));
    EXPECT_TRUE(
        host.AddPage(std::make_unique<RecordedPage>(second, IDD_CONTRACT_SECOND_PAGE, "Titled")));
    EXPECT_TRUE(host.AddPage(std::make_unique<RecordedPage>(third, IDD_CONTRACT_PAGE, "Third")));
  }
  /// Forgets what the pages were told so far.
  void Forget() {
    for (PageRecord* page : {&first, &second, &third}) (void)page->controller.TakeEvents();
  }

  PageRecord first;
  PageRecord second;
  PageRecord third;
};

}  // namespace pelora::contract
