// SPDX-License-Identifier: Apache-2.0
#include "features/prop_page_features.h"

#include <gtest/gtest.h>

#include "tests/unit/features/features_bench.h"

namespace pelora {
namespace {

using testing::FaultPoint;
using testing::FeaturesTest;
using testing::kAda;
using testing::kArchiverRow;
using testing::kBob;
using testing::kImapRow;
using testing::kPop3Row;
using Lines = std::vector<std::string>;

constexpr std::array<std::string_view, 2> kAB = {"b", "a"};
constexpr std::array kMade = {FeatureWithProps{"c", nullptr}};

class FeaturesPageTest : public FeaturesTest {
 protected:
  /// Opens the tab, of which a binding or reading is to fail; gives the answer to the dialog.
  HRESULT OpenFailing(const std::vector<std::string>& paths) {
    testing::SelectionDataObject selection(paths);
    // A dialog goes before its page.
    standing_.reset();
    failing_ = Ref<CPropPageFeatures>::Adopt(new CPropPageFeatures(bench_.platform));
    EXPECT_EQ(static_cast<IShellExtInit&>(*failing_).Initialize(&selection), S_OK);
    standing_.emplace(bench_.Template(IDD_PROPPAGE_FEATURES), *failing_);
    const HRESULT status = standing_->Open();
    IListView& view = standing_->ListView(IDC_FEATURE_LIST);
    rows_.clear();
    for (RowIndex row = 0; row < view.RowCount(); ++row) {
      rows_.push_back(view.Text(row, 0) + ": " + view.Text(row, 1));
    }
    return status;
  }
  /// The rows that a failed loading left.
  Lines rows_;
  Ref<CPropPageFeatures> failing_;
  std::optional<HeadlessDialog> standing_;
};

// Loading.

TEST_F(FeaturesPageTest, IsATabOfItsTemplateAndTitle) {
  OpenOn({});
  EXPECT_EQ(page().page().dialog_template(), 227);
  EXPECT_EQ(page().page().title(), "Pelora Features");
}

TEST_F(FeaturesPageTest, ListsTheFeaturesInOrderWithTheirStatus) {
  OpenOn({.enabled = {"imap"}, .disabled = {"pop3"}, .servers = {"arc1"}});
  EXPECT_EQ(Rows(),
            (Lines{"archiver: Enabled on server 'arc1'", "imap: Enabled", "pop3: Disabled"}));
  EXPECT_EQ(Buttons(), "none");
  EXPECT_FALSE(page().IsModified());
  EXPECT_EQ(bench_.directory.live_objects(), 0U);
}

TEST_F(FeaturesPageTest, HasTwoColumnsOfHalfTheWidthAndSelectsWholeRows) {
  AddUser(kAda, {});
  resources::DialogTemplate described = bench_.Template(IDD_PROPPAGE_FEATURES);
  // A width that cannot be halved without a rest.
  described.items.front().width = 258;
  testing::OpenPage<CPropPageFeatures> page(bench_, new CPropPageFeatures(bench_.platform),
                                            described, {kAda});
  const HeadlessListView& view = *page.dialog().Find(IDC_FEATURE_LIST)->list_view;
  EXPECT_EQ(page.dialog().ClientWidth(IDC_FEATURE_LIST), 383);
  ASSERT_EQ(view.columns().size(), 2U);
  EXPECT_EQ(view.columns()[0].title, "Feature");
  EXPECT_EQ(view.columns()[1].title, "Status");
  EXPECT_EQ(view.columns()[0].width, 191);
  EXPECT_EQ(view.columns()[1].width, 191);
  EXPECT_TRUE(view.full_row_select());
}

TEST_F(FeaturesPageTest, UnsetAndAmbiguousFeaturesAreMuted) {
  AddUser(kAda, {.enabled = {"imap"}, .servers = {"arc1"}});
  AddUser(kBob, {.disabled = {"imap"}, .servers = {"arc2"}});
  Open({kAda, kBob});
  EXPECT_EQ(Rows(), (Lines{"archiver: (Ambiguous)", "imap: (Ambiguous)", "pop3: (Unset)"}));
  Select({kImapRow, kPop3Row});
  EXPECT_EQ(user().Click(IDC_FEATURE_ENABLE), UserAnswer::kDone);
  EXPECT_EQ(Rows(), (Lines{"archiver: (Ambiguous)", "imap: Enabled", "pop3: Enabled"}));
}

TEST_F(FeaturesPageTest, OtherControlsAndRowsHaveNoRole) {
  OpenOn({});
  EXPECT_EQ(page().page().ListViewTextRole(IDC_FEATURE_LIST, kImapRow, 2), TextRole::kNormal);
  EXPECT_EQ(page().page().ListViewTextRole(IDC_FEATURE_LIST, 7, 1), TextRole::kNormal);
  EXPECT_EQ(page().page().ListViewTextRole(IDC_FEATURE_ENABLE, kImapRow, 1), TextRole::kNormal);
}

TEST_F(FeaturesPageTest, ReadsEachFeatureFromEveryUserInOrder) {
  AddUser(kAda, {});
  AddUser(kBob, {});
  EXPECT_EQ(OpenFailing({kAda, kBob}), S_OK);
  const std::string ada = "Get " + kAda + " ";
  const std::string bob = "Get " + kBob + " ";
  const std::string enabled = "peloraEnabledFeatures";
  const std::string disabled = "peloraDisabledFeatures";
  EXPECT_EQ(bench_.directory.Log({testing::DirectoryCall::Kind::kGet}),
            (Lines{ada + "peloraUserArchiveServers", bob + "peloraUserArchiveServers",
                   ada + enabled, ada + disabled, bob + enabled, bob + disabled, ada + enabled,
                   ada + disabled, bob + enabled, bob + disabled}));
}

TEST_F(FeaturesPageTest, BindsUsersAsUsers) {
  bench_.directory.AddObject(kAda, {}, {});
  EXPECT_EQ(OpenFailing({kAda}), E_NOINTERFACE);
  EXPECT_EQ(rows_, Lines{});
  EXPECT_EQ(Boxes(), Lines{"Unable to get connection with the ldap user.\r\n\r\n"
                           "Error code: 0X80004002"});
}

TEST_F(FeaturesPageTest, AFailedReadingEndsTheLoadingAndKeepsTheRows) {
  AddUser(kAda, {.enabled = {"imap"}});
  const std::vector<Lines> rows_left = {
      {"archiver: "},
      {"archiver: Disabled", "imap: "},
      {"archiver: Disabled", "imap: "},
      {"archiver: Disabled", "imap: Enabled", "pop3: "},
      {"archiver: Disabled", "imap: Enabled", "pop3: "},
  };
  for (std::size_t call = 1; call <= rows_left.size(); ++call) {
    SCOPED_TRACE(call);
    faults().Fail(FaultPoint::kGet, call, E_ACCESSDENIED);
    EXPECT_EQ(OpenFailing({kAda}), E_ACCESSDENIED);
    EXPECT_EQ(rows_, rows_left[call - 1]);
    EXPECT_EQ(Boxes(), Lines{});
    EXPECT_EQ(bench_.directory.live_objects(), 0U);
    // What is left can be selected.
    HeadlessUser user(*standing_);
    user.ClickListViewCell(IDC_FEATURE_LIST, rows_.size() - 1, 0, false);
    for (const ControlId id : {IDC_FEATURE_ENABLE, IDC_FEATURE_DISABLE, IDC_FEATURE_PROPERTIES}) {
      EXPECT_FALSE(standing_->IsEnabled(id));
    }
    user.DoubleClickListViewCell(IDC_FEATURE_LIST, rows_.size() - 1, 0);
    EXPECT_EQ(Boxes(), Lines{});
  }
}

TEST_F(FeaturesPageTest, AFeatureWhosePropertiesCannotBeMadeHasNoStatus) {
  const FeatureTable features = {kAB, kMade};
  AddUser(kAda, {.enabled = {"a", "c"}});
  Open({kAda}, features);
  EXPECT_EQ(Rows(), (Lines{"a: Enabled", "b: (Unset)", "c: "}));
  DoubleClick(2);
  Select({2});
  EXPECT_EQ(Buttons(), "none");
  EXPECT_EQ(Rows(), (Lines{"a: Enabled", "b: (Unset)", "c: "}));
  EXPECT_TRUE(page().Apply());
  EXPECT_EQ(Stored(kAda, "peloraEnabledFeatures"), R"(["a", "c"])");
}

// The selection.

TEST_F(FeaturesPageTest, TheButtonsFollowTheSelection) {
  OpenOn({.enabled = {"imap"}, .disabled = {"pop3"}});
  Select({kImapRow});
  EXPECT_EQ(Buttons(), "Disable");
  Select({kPop3Row});
  EXPECT_EQ(Buttons(), "Enable");
  Select({kImapRow, kPop3Row});
  EXPECT_EQ(Buttons(), "Enable Disable");
  Select({kArchiverRow});
  EXPECT_EQ(Buttons(), "Properties");
  Select({kArchiverRow, kImapRow});
  EXPECT_EQ(Buttons(), "none");
  Select({});
  EXPECT_EQ(Buttons(), "none");
}

TEST_F(FeaturesPageTest, AProgramsSelectionCountsToo) {
  OpenOn({.enabled = {"imap"}});
  list().SetSelected(kImapRow, true);
  EXPECT_EQ(Buttons(), "Disable");
  list().SetSelected(kImapRow, false);
  EXPECT_EQ(Buttons(), "none");
}

TEST_F(FeaturesPageTest, OtherChangesOfARowAreNoSelection) {
  OpenOn({.enabled = {"imap"}});
  CPropPageFeatures& page = this->page().page();
  const auto tell = [&](const ListViewItemChange& change, ControlId id = IDC_FEATURE_LIST) {
    page.OnListViewItemChanged(id, change);
    return Buttons();
  };
  // A text; a state that is none of the selection; another list.
  EXPECT_EQ(tell({kImapRow, false, false, true}), "none");
  EXPECT_EQ(tell({kImapRow, true, false, false}), "none");
  EXPECT_EQ(tell({kImapRow, true, false, true}, IDC_FEATURE_ENABLE), "none");
  EXPECT_EQ(tell({kImapRow, true, false, true}), "Disable");
  EXPECT_EQ(tell({kImapRow, false, true, false}), "Disable");
  EXPECT_EQ(tell({kImapRow, true, false, false}), "Disable");
  EXPECT_EQ(tell({kImapRow, true, true, true}), "Disable");
  EXPECT_EQ(tell({kImapRow, true, true, false}), "none");
}

// Choices.

TEST_F(FeaturesPageTest, EnableAndDisableChangeEverySelectedFeature) {
  OpenOn({.disabled = {"pop3"}});
  Select({kImapRow, kPop3Row});
  EXPECT_EQ(user().Click(IDC_FEATURE_ENABLE), UserAnswer::kDone);
  EXPECT_EQ(Rows(), (Lines{"archiver: Disabled", "imap: Enabled", "pop3: Enabled"}));
  EXPECT_EQ(Buttons(), "Disable");
  EXPECT_TRUE(page().IsModified());
  EXPECT_EQ(user().Click(IDC_FEATURE_DISABLE), UserAnswer::kDone);
  EXPECT_EQ(Rows(), (Lines{"archiver: Disabled", "imap: Disabled", "pop3: Disabled"}));
  EXPECT_EQ(Buttons(), "Enable");
  EXPECT_EQ(bench_.directory.calls().size(), 0U);
}

TEST_F(FeaturesPageTest, ANameThatStandsAlreadyIsLeftButThePageIsModified) {
  OpenOn({.enabled = {"imap"}});
  Select({kImapRow});
  // The button is off; its click is sent all the same, as a key's may be.
  dialog().Notify(IDC_FEATURE_ENABLE, ControlNotification::kClicked);
  EXPECT_EQ(Rows(), (Lines{"archiver: Disabled", "imap: Enabled", "pop3: (Unset)"}));
  EXPECT_TRUE(page().IsModified());
  EXPECT_TRUE(page().Apply());
  EXPECT_EQ(bench_.Writes(), Lines{"SetInfo " + kAda});
}

TEST_F(FeaturesPageTest, EnableWithoutASelectionOnlyModifiesThePage) {
  OpenOn({});
  dialog().Notify(IDC_FEATURE_DISABLE, ControlNotification::kClicked);
  EXPECT_EQ(Rows(), (Lines{"archiver: Disabled", "imap: (Unset)", "pop3: (Unset)"}));
  EXPECT_TRUE(page().IsModified());
}

TEST_F(FeaturesPageTest, FeaturesWithPropertiesAreNotEnabledOrDisabled) {
  OpenOn({.servers = {"arc1"}});
  Select({kArchiverRow, kImapRow});
  dialog().Notify(IDC_FEATURE_DISABLE, ControlNotification::kClicked);
  EXPECT_EQ(Rows(),
            (Lines{"archiver: Enabled on server 'arc1'", "imap: Disabled", "pop3: (Unset)"}));
  EXPECT_EQ(Buttons(), "none");
}

TEST_F(FeaturesPageTest, ADoubleClickTogglesAndLeavesThePageUnmodified) {
  AddUser(kAda, {.enabled = {"imap"}});
  AddUser(kBob, {.disabled = {"imap"}});
  Open({kAda, kBob});
  DoubleClick(kImapRow);
  EXPECT_EQ(Rows(), (Lines{"archiver: Disabled", "imap: Disabled", "pop3: (Unset)"}));
  EXPECT_EQ(Buttons(), "Enable");
  DoubleClick(kImapRow);
  EXPECT_EQ(Rows(), (Lines{"archiver: Disabled", "imap: Enabled", "pop3: (Unset)"}));
  EXPECT_EQ(Buttons(), "Disable");
  DoubleClick(kPop3Row);
  EXPECT_EQ(Rows(), (Lines{"archiver: Disabled", "imap: Enabled", "pop3: Enabled"}));
  EXPECT_FALSE(dialog().PageModified().has_value()) << "the page says nothing at all";
  // Applied it is written all the same.
  EXPECT_TRUE(page().Apply());
  EXPECT_EQ(Stored(kBob, "peloraEnabledFeatures"), R"(["imap", "pop3"])");
}

TEST_F(FeaturesPageTest, ADoubleClickElsewhereDoesNothing) {
  OpenOn({});
  user().DoubleClickListViewCell(IDC_FEATURE_LIST, 3, 0);
  user().DoubleClickListViewCell(IDC_FEATURE_LIST, kImapRow, 2);
  page().page().OnListViewDoubleClick(IDC_FEATURE_LIST, 3);
  page().page().OnListViewDoubleClick(IDC_FEATURE_ENABLE, kImapRow);
  EXPECT_EQ(Rows(), (Lines{"archiver: Disabled", "imap: (Unset)", "pop3: (Unset)"}));
  EXPECT_TRUE(bench_.dialogs.records().empty());
}

// Properties.

TEST_F(FeaturesPageTest, PropertiesEditTheFirstSelectedRow) {
  OpenOn({});
  Select({kArchiverRow});
  const auto add_server = [](HeadlessUser& user) {
    user.TypeText(IDC_ARCHIVER_NAME, "arc1");
    user.Click(IDC_ARCHIVER_ADD);
    user.Click(1);
  };
  bench_.dialogs.PlayNext(add_server);
  EXPECT_EQ(user().Click(IDC_FEATURE_PROPERTIES), UserAnswer::kDone);
  EXPECT_EQ(Rows().front(), "archiver: Enabled on server 'arc1'");
  EXPECT_FALSE(dialog().PageModified().has_value());

  // A click that comes while several are selected goes to the lowest row.
  Select({kImapRow, kArchiverRow});
  bench_.dialogs.PlayNext([](HeadlessUser& user) {
    user.SelectListRow(IDC_ARCHIVER_LIST, 0);
    user.Click(IDC_ARCHIVER_REMOVE);
    user.Click(1);
  });
  dialog().Notify(IDC_FEATURE_PROPERTIES, ControlNotification::kClicked);
  EXPECT_EQ(Rows().front(), "archiver: Disabled");

  Select({kImapRow, kPop3Row});
  dialog().Notify(IDC_FEATURE_PROPERTIES, ControlNotification::kClicked);
  Select({});
  dialog().Notify(IDC_FEATURE_PROPERTIES, ControlNotification::kClicked);
  EXPECT_EQ(bench_.dialogs.records().size(), 2U);
}

TEST_F(FeaturesPageTest, ADoubleClickOpensTheProperties) {
  AddUser(kAda, {.servers = {"arc1"}});
  AddUser(kBob, {.servers = {"arc2"}});
  Open({kAda, kBob});
  bench_.messages.AnswerNext(kDialogYes);
  bench_.dialogs.PlayNext([](HeadlessUser& user) {
    EXPECT_EQ(user.dialog().ListBox(IDC_ARCHIVER_LIST).Count(), 0U);
    user.TypeText(IDC_ARCHIVER_NAME, "arc3");
    user.Click(IDC_ARCHIVER_ADD);
    user.Click(1);
  });
  DoubleClick(kArchiverRow);
  EXPECT_EQ(Rows().front(), "archiver: Enabled on server 'arc3'");
  EXPECT_FALSE(dialog().PageModified().has_value());
  EXPECT_TRUE(page().Apply());
  EXPECT_EQ(Stored(kAda, "peloraUserArchiveServers"), "\"arc3\"");
  EXPECT_EQ(Stored(kBob, "peloraUserArchiveServers"), "\"arc3\"");
}

TEST_F(FeaturesPageTest, PropertiesThatCannotBeEditedAreAnError) {
  const resources::ResourceFile none;
  HeadlessModalDialogs no_dialogs(none);
  const Platform platform{bench_.faulty,   bench_.messages, no_dialogs,
                          bench_.choosers, bench_.text,     bench_.library};
  AddUser(kAda, {});
  testing::OpenPage<CPropPageFeatures> page(bench_, new CPropPageFeatures(platform),
                                            bench_.Template(IDD_PROPPAGE_FEATURES), {kAda});
  page.user().DoubleClickListViewCell(IDC_FEATURE_LIST, kArchiverRow, 0);
  EXPECT_EQ(Boxes(), Lines{"Unknown error occured\r\n\r\nError code: 0X80004005"});
}

}  // namespace
}  // namespace pelora
