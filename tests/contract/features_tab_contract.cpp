// SPDX-License-Identifier: Apache-2.0
#include "tests/contract/features_tab_contract.h"

#include <array>

namespace pelora::contract {
namespace {

constexpr auto kOk = static_cast<ControlId>(kDialogOk);
constexpr auto kCancel = static_cast<ControlId>(kDialogCancel);
constexpr const char* kWarning =
    "This will clear the settings for all selected objects. Do you wish to continue?";

}  // namespace

void FeaturesTabContract::OpenUsers(const std::vector<Lists>& users) {
  constexpr std::array kSamples = {sample::kHelga, sample::kTom, sample::kJuergen};
  std::vector<const char*> samples;
  for (const Lists& lists : users) {
    samples.push_back(kSamples.at(samples.size()));
    Console().Give(Here(samples.back()), {{"peloraEnabledFeatures", lists.enabled},
                                          {"peloraDisabledFeatures", lists.disabled},
                                          {"peloraUserArchiveServers", lists.servers}});
  }
  Open("CPropPageFeatures", samples);
}

void FeaturesTabContract::OpenTwo(const char* server_of_one, const char* server_of_other) {
  OpenUsers({{.enabled = {"imap", "pop3"}, .servers = {server_of_one}},
             {.disabled = {"pop3"}, .servers = {server_of_other}}});
}

FeaturesTabContract::Lines FeaturesTabContract::Features() {
  Lines rows;
  const IListView& list = Page().ListView(IDC_FEATURE_LIST);
  for (RowIndex row = 0; row < list.RowCount(); ++row) {
    EXPECT_EQ(User().DrawnRole(IDC_FEATURE_LIST, row, 0), TextRole::kNormal) << row;
    const bool is_muted = User().DrawnRole(IDC_FEATURE_LIST, row, 1) == TextRole::kMuted;
    const std::string status = list.Text(row, 1);
    rows.push_back(list.Text(row, 0) + ": " + (is_muted ? "(" + status + ")" : status));
  }
  return rows;
}

std::string FeaturesTabContract::Buttons() {
  std::string enabled;
  for (const ControlId id : {IDC_FEATURE_PROPERTIES, IDC_FEATURE_ENABLE, IDC_FEATURE_DISABLE}) {
    if (Page().IsEnabled(id)) enabled += (enabled.empty() ? "" : " ") + Page().Text(id);
  }
  return enabled.empty() ? "none" : enabled;
}

void FeaturesTabContract::Click(RowIndex row, bool add) {
  User().ClickListViewCell(IDC_FEATURE_LIST, row, 1, add);
}

void FeaturesTabContract::DoubleClick(RowIndex row) {
  User().DoubleClickListViewCell(IDC_FEATURE_LIST, row, 1);
}

void FeaturesTabContract::Choose(RowIndex row, ControlId button) {
  Click(row);
  User().Click(button);
}

void FeaturesTabContract::AddServer(const std::string& name) {
  Console().PlayNext([name](DialogPlayer& user) {
    user.Type(IDC_ARCHIVER_NAME, name);
    user.Click(IDC_ARCHIVER_ADD);
    user.Click(kOk);
  });
}

// What it shows.

TEST_P(FeaturesTabContract, ListsTheFeaturesInTwoColumnsOfHalfTheWidthAndSelectsNone) {
  OpenTwo();
  EXPECT_EQ(Features(),
            (Lines{"archiver: Enabled on server 'arc1'", "imap: Enabled", "pop3: (Ambiguous)"}));
  EXPECT_EQ(Buttons(), "none");
  const int half = Page().ClientWidth(IDC_FEATURE_LIST) / 2;
  EXPECT_EQ(User().ColumnWidth(IDC_FEATURE_LIST, 0), half);
  EXPECT_EQ(User().ColumnWidth(IDC_FEATURE_LIST, 1), half);
}

TEST_P(FeaturesTabContract, WhatIsUnsetAndWhatUsersDisagreeOnIsMutedUntilItIsChosen) {
  OpenUsers({{}});
  EXPECT_EQ(Features(), (Lines{"archiver: Disabled", "imap: (Unset)", "pop3: (Unset)"}));
  Choose(kImap, IDC_FEATURE_ENABLE);
  Click(kPop3);
  EXPECT_EQ(Feature(kImap), "imap: Enabled");
  Console().Close();
  OpenTwo("arc1", "arc2");
  EXPECT_EQ(Features(), (Lines{"archiver: (Ambiguous)", "imap: Enabled", "pop3: (Ambiguous)"}));
  Choose(kPop3, IDC_FEATURE_ENABLE);
  Click(kImap);
  EXPECT_EQ(Feature(kPop3), "pop3: Enabled");
}

TEST_P(FeaturesTabContract, TheButtonsFollowTheSelection) {
  OpenTwo();
  Click(kImap);
  // One of the two has it unset.
  EXPECT_EQ(Buttons(), Console().LooksAfterFields() ? "Enable Disable" : "Disable");
  Click(kPop3, true);
  EXPECT_EQ(Buttons(), "Enable Disable");
  Click(kArchiver);
  EXPECT_EQ(Buttons(), "Properties");
  Click(kImap, true);
  EXPECT_EQ(Buttons(), "none");
  Click(kNoRow);
  EXPECT_EQ(Buttons(), "none");
  IListView& list = Page().ListView(IDC_FEATURE_LIST);
  list.SetSelected(kPop3, true);
  EXPECT_EQ(Buttons(), "Enable Disable") << "a program's selection counts too";
  list.SetSelected(kPop3, false);
  EXPECT_EQ(Buttons(), "none");
}

// Choices and what they write.

TEST_P(FeaturesTabContract, EnableAndDisableWriteBothListsOfEveryUser) {
  OpenTwo();
  Choose(kPop3, IDC_FEATURE_ENABLE);
  EXPECT_EQ(Buttons(), "Disable");
  EXPECT_TRUE(Console().IsApplyEnabled());
  Choose(kImap, IDC_FEATURE_DISABLE);
  EXPECT_EQ(Apply(), (Lines{"peloraDisabledFeatures: imap", "peloraEnabledFeatures: pop3"}));
  EXPECT_EQ(Changes(1), (Lines{"peloraDisabledFeatures: imap", "peloraEnabledFeatures: pop3"}));
  EXPECT_FALSE(Console().IsApplyEnabled());
  Console().Close();
  const Lists chosen = {.enabled = {"pop3"}, .disabled = {"imap"}, .servers = {"arc1"}};
  OpenUsers({chosen, chosen});
  EXPECT_EQ(Features(),
            (Lines{"archiver: Enabled on server 'arc1'", "imap: Disabled", "pop3: Enabled"}));
}

TEST_P(FeaturesTabContract, NamesThatAreNoFeaturesStay) {
  OpenUsers({{.enabled = {"imap", "mobile"}}});
  Choose(kImap, IDC_FEATURE_DISABLE);
  EXPECT_EQ(Apply(), (Lines{"peloraDisabledFeatures: imap", "peloraEnabledFeatures: mobile"}));
}

TEST_P(FeaturesTabContract, ADoubleClickTogglesAndOkWritesItThoughThePageIsNotModified) {
  OpenUsers({{.enabled = {"imap", "pop3"}}, {.enabled = {"imap"}}});
  DoubleClick(kImap);
  EXPECT_EQ(Feature(kImap), "imap: Disabled");
  EXPECT_EQ(Buttons(), "Enable");
  DoubleClick(kNoRow);
  User().RightDoubleClickListViewCell(IDC_FEATURE_LIST, kPop3, 0);
  EXPECT_EQ(Feature(kPop3), "pop3: Enabled");
  EXPECT_EQ(Console().IsApplyEnabled(), Console().LooksAfterFields());
  EXPECT_EQ(Ok(), (Lines{"peloraDisabledFeatures: imap", "peloraEnabledFeatures: pop3"}));
  EXPECT_EQ(Changes(1), (Lines{"peloraDisabledFeatures: imap", "peloraEnabledFeatures: none"}));
}

TEST_P(FeaturesTabContract, UntouchedNothingIsWritten) {
  OpenTwo();
  EXPECT_EQ(Ok(), Lines{});
  EXPECT_EQ(Changes(1), Lines{});
}

// The archive servers.

TEST_P(FeaturesTabContract, ArchiveServersAreEditedInTheirDialog) {
  OpenUsers({{.servers = {"arc1"}}});
  // There is room for 63 characters, of which the last one counts twice and is never cut in two.
  const std::string longest = std::string(60, 'x') + "ä🖥";
  const std::string cut = std::string(62, 'z');
  Console().PlayNext([&](DialogPlayer& user) {
    EXPECT_EQ(user.RowsOf(IDC_ARCHIVER_LIST), Lines{"arc1"});
    EXPECT_FALSE(user.CanUse(IDC_ARCHIVER_ADD));
    EXPECT_FALSE(user.CanUse(IDC_ARCHIVER_REMOVE));
    user.ClickListRow(IDC_ARCHIVER_LIST, 0);
    EXPECT_TRUE(user.CanUse(IDC_ARCHIVER_REMOVE));
    user.Click(IDC_ARCHIVER_REMOVE);
    EXPECT_EQ(user.TextOf(IDC_ARCHIVER_NAME), "arc1") << "to be corrected";
    EXPECT_FALSE(user.CanUse(IDC_ARCHIVER_REMOVE));
    EXPECT_TRUE(user.CanUse(IDC_ARCHIVER_ADD));
    user.Type(IDC_ARCHIVER_NAME, "-größe");
    user.Click(IDC_ARCHIVER_ADD);
    EXPECT_FALSE(user.CanUse(IDC_ARCHIVER_ADD));
    user.Type(IDC_ARCHIVER_NAME, longest + "y");
    user.Click(IDC_ARCHIVER_ADD);
    user.Type(IDC_ARCHIVER_NAME, cut + "🖥");
    user.Click(IDC_ARCHIVER_ADD);
    user.Click(kOk);
  });
  Choose(kArchiver, IDC_FEATURE_PROPERTIES);
  EXPECT_EQ(Feature(kArchiver),
            "archiver: Enabled on servers 'arc1-größe', '" + longest + "', '" + cut + "'");
  EXPECT_EQ(Console().IsApplyEnabled(), Console().LooksAfterFields());
  EXPECT_EQ(Ok(), Lines{"peloraUserArchiveServers: arc1-größe | " + longest + " | " + cut});
}

TEST_P(FeaturesTabContract, ACancelledDialogKeepsTheServers) {
  OpenTwo();
  Console().PlayNext([](DialogPlayer& user) {
    user.Type(IDC_ARCHIVER_NAME, "arc2");
    user.Click(IDC_ARCHIVER_ADD);
    user.Click(kCancel);
  });
  DoubleClick(kArchiver);
  EXPECT_EQ(Feature(kArchiver), "archiver: Enabled on server 'arc1'");
  EXPECT_EQ(Ok(), Lines{});
}

TEST_P(FeaturesTabContract, AServerIsSearchedForFromTheDialog) {
  OpenUsers({{}});
  Console().Pick({Here(sample::kServer)});
  Console().PlayNext([](DialogPlayer& user) {
    user.Click(IDC_ARCHIVER_SEARCH);
    EXPECT_EQ(user.TextOf(IDC_ARCHIVER_NAME), "mail01");
    user.Click(IDC_ARCHIVER_ADD);
    user.Click(kOk);
  });
  DoubleClick(kArchiver);
  EXPECT_EQ(Feature(kArchiver), "archiver: Enabled on server 'mail01'");
  EXPECT_EQ(Ok(), Lines{"peloraUserArchiveServers: mail01"});
}

TEST_P(FeaturesTabContract, AnEmptiedListLeavesNothingBehind) {
  OpenUsers({{.enabled = {"pop3"}, .servers = {"arc1", "arc2"}}});
  Console().PlayNext([](DialogPlayer& user) {
    for (int server = 0; server < 2; ++server) {
      user.ClickListRow(IDC_ARCHIVER_LIST, 0);
      user.Click(IDC_ARCHIVER_REMOVE);
    }
    user.Click(kOk);
  });
  DoubleClick(kArchiver);
  EXPECT_EQ(Feature(kArchiver), "archiver: Disabled");
  EXPECT_EQ(Ok(), Lines{"peloraUserArchiveServers: none"});
}

TEST_P(FeaturesTabContract, UsersThatDisagreeAreReplacedAfterAQuestion) {
  OpenTwo("arc1", "arc2");
  const TabBox warning = {.caption = "Warning", .text = kWarning};
  Console().AwaitBox(kDialogNo);
  DoubleClick(kArchiver);
  EXPECT_EQ(Console().TakeBox(), warning);
  Click(kNoRow);
  EXPECT_EQ(Feature(kArchiver), "archiver: (Ambiguous)");
  Console().AwaitBox(kDialogYes);
  Console().PlayNext([](DialogPlayer& user) {
    EXPECT_EQ(user.RowsOf(IDC_ARCHIVER_LIST), Lines{});
    user.Type(IDC_ARCHIVER_NAME, "arc3");
    user.Click(IDC_ARCHIVER_ADD);
    user.Click(kOk);
  });
  DoubleClick(kArchiver);
  EXPECT_EQ(Console().TakeBox(), warning);
  EXPECT_EQ(Feature(kArchiver), "archiver: Enabled on server 'arc3'");
  EXPECT_EQ(Ok(), Lines{"peloraUserArchiveServers: arc3"});
  EXPECT_EQ(Changes(1), Lines{"peloraUserArchiveServers: arc3"});
}

// Failures.

TEST_P(FeaturesTabContract, AFailureOnTheSecondUserCommitsNoneAndTheRetryWritesAll) {
  const Lists imap = {.enabled = {"imap"}};
  OpenUsers({imap, imap, imap});
  Choose(kImap, IDC_FEATURE_DISABLE);
  Console().FailPut("peloraDisabledFeatures", 2);
  Console().AwaitBox();
  EXPECT_EQ(Apply(), Lines{});
  EXPECT_EQ(Console().TakeBox(), ErrorBox("Failed to update object: ", "0X80070005"));
  EXPECT_TRUE(Console().IsOpen());
  EXPECT_TRUE(Console().IsApplyEnabled());
  EXPECT_EQ(Feature(kImap), "imap: Disabled") << "what was chosen stays chosen";
  const Lines disabled = {"peloraDisabledFeatures: imap", "peloraEnabledFeatures: none"};
  EXPECT_EQ(Apply(), disabled);
  for (const std::size_t user : {1U, 2U}) EXPECT_EQ(Changes(user), disabled);
  EXPECT_FALSE(Console().IsApplyEnabled());
}

TEST_P(FeaturesTabContract, ACommitThatFailsOnTheSecondUserLeavesTheThirdAndTheRetryEndsIt) {
  const Lists imap = {.enabled = {"imap"}};
  OpenUsers({imap, imap, imap});
  Choose(kImap, IDC_FEATURE_DISABLE);
  Console().FailCommit(2);
  Console().AwaitBox();
  const Lines disabled = {"peloraDisabledFeatures: imap", "peloraEnabledFeatures: none"};
  EXPECT_EQ(Apply(), disabled);
  for (const std::size_t user : {1U, 2U}) EXPECT_EQ(Changes(user), Lines{});
  const TabBox told = ErrorBox("Unknown error occured", "0X80070005");
  const TabBox box = Console().TakeBox();
  EXPECT_EQ(box.caption, told.caption);
  // Where changes are guarded, it says more.
  EXPECT_EQ(box.text.substr(0, told.text.size()), told.text);
  EXPECT_TRUE(Console().IsApplyEnabled());
  EXPECT_EQ(Apply(), Lines{});
  for (const std::size_t user : {1U, 2U}) EXPECT_EQ(Changes(user), disabled);
  EXPECT_FALSE(Console().IsApplyEnabled());
}

}  // namespace pelora::contract
