// SPDX-License-Identifier: Apache-2.0
// A features tab of which something could not be read: what stands can be chosen and applied, what
// is missing is asked for again, and nothing of it is written unseen.
#include <gtest/gtest.h>

#include "tests/unit/features/features_bench.h"

namespace pelora {
namespace {

using testing::FaultPoint;
using testing::kAda;
using testing::kEnabledList;
using testing::kImapRow;
using testing::kServerList;
using Lines = std::vector<std::string>;

class FeaturesUnloadedTest : public testing::FeaturesTest {
 protected:
  FeaturesUnloadedTest() { AddUser(kAda, {.disabled = {"imap"}, .servers = {"arc1"}}); }

  /// Makes the tab's dialog; what loading answers.
  HRESULT OpenTab() {
    testing::SelectionDataObject selection({kAda});
    EXPECT_EQ(static_cast<IShellExtInit&>(*tab_).Initialize(&selection), S_OK);
    dialog_.emplace(bench_.Template(IDD_PROPPAGE_FEATURES), *tab_);
    return dialog_->Open();
  }
  Lines Rows() {
    IListView& view = dialog_->ListView(IDC_FEATURE_LIST);
    Lines rows;
    for (RowIndex row = 0; row < view.RowCount(); ++row) {
      rows.push_back(view.Text(row, 0) + ": " + view.Text(row, 1));
    }
    return rows;
  }
  bool Apply() {
    bench_.directory.ClearCalls();
    const bool applied = tab_->OnPageNotification(PageNotification::kApply) == kPageApplied;
    EXPECT_EQ(bench_.directory.live_objects(), 0U);
    return applied;
  }

  const Lines kWhole = {"archiver: Enabled on server 'arc1'", "imap: Disabled", "pop3: Unset"};
  Ref<CPropPageFeatures> tab_ =
      Ref<CPropPageFeatures>::Adopt(new CPropPageFeatures(bench_.platform));
  std::optional<HeadlessDialog> dialog_;
};

TEST_F(FeaturesUnloadedTest, OneReadingThatFailedIsMadeUpForByTheNextApply) {
  faults().FailAttribute(FaultPoint::kGet, kServerList, 1, E_ACCESSDENIED);
  EXPECT_EQ(OpenTab(), E_ACCESSDENIED);
  EXPECT_EQ(Rows(), Lines{"archiver: "});
  EXPECT_TRUE(Apply());
  EXPECT_EQ(bench_.Writes(), Lines{"SetInfo " + kAda});
  EXPECT_EQ(Rows(), kWhole);
  EXPECT_EQ(Boxes(), Lines{});
  const HeadlessListView& view = *dialog_->Find(IDC_FEATURE_LIST)->list_view;
  EXPECT_EQ(view.columns().size(), 2U);
}

TEST_F(FeaturesUnloadedTest, AReadingThatGoesOnFailingKeepsNobodyFromTheRest) {
  for (std::size_t reading = 1; reading <= 3; ++reading) {
    faults().FailAttribute(FaultPoint::kGet, kServerList, reading, E_ACCESSDENIED);
  }
  EXPECT_EQ(OpenTab(), E_ACCESSDENIED);
  for (int round = 0; round < 2; ++round) {
    EXPECT_TRUE(Apply());
    EXPECT_EQ(bench_.Writes(), Lines{"SetInfo " + kAda});
    EXPECT_EQ(Rows(), Lines{"archiver: "});
    EXPECT_EQ(Boxes(), Lines{});
  }
  EXPECT_TRUE(Apply());
  EXPECT_EQ(Rows(), kWhole);
}

TEST_F(FeaturesUnloadedTest, AFailedBindingIsMadeUpForToo) {
  faults().Fail(FaultPoint::kGetObject, 1, E_ACCESSDENIED);
  EXPECT_EQ(OpenTab(), E_ACCESSDENIED);
  EXPECT_EQ(Rows(), Lines{});
  EXPECT_EQ(Boxes().size(), 1U);
  faults().Fail(FaultPoint::kGetObject, 1, kNoSuchObject);
  EXPECT_FALSE(Apply()) << "the directory is still away";
  EXPECT_EQ(Boxes(), Lines{"Unable to get connection with the ldap user\r\n\r\n"
                           "Error code: 0X80072030"});
  EXPECT_TRUE(Apply());
  EXPECT_EQ(Rows(), kWhole);
}

TEST_F(FeaturesUnloadedTest, WhatStandsCanBeChosenAndIsWritten) {
  faults().FailAttribute(FaultPoint::kGet, kEnabledList, 2, E_ACCESSDENIED);
  EXPECT_EQ(OpenTab(), E_ACCESSDENIED);
  EXPECT_EQ(Rows(), (Lines{kWhole[0], kWhole[1], "pop3: "}));
  HeadlessUser user(*dialog_);
  EXPECT_EQ(user.ClickListViewCell(IDC_FEATURE_LIST, kImapRow, 0, false), UserAnswer::kDone);
  EXPECT_EQ(user.Click(IDC_FEATURE_ENABLE), UserAnswer::kDone);
  EXPECT_TRUE(Apply());
  EXPECT_EQ(Stored(kAda, kEnabledList), "\"imap\"");
  EXPECT_EQ(Rows(), (Lines{kWhole[0], "imap: Enabled", "pop3: Unset"}))
      << "the choice was kept, the rest was read";
}

}  // namespace
}  // namespace pelora
