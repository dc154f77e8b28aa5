// SPDX-License-Identifier: Apache-2.0
// The features tab on a directory server.
#include <gtest/gtest.h>

#include "features/prop_page_features.h"
#include "hosts/ldap/store_directory_service.h"
#include "resources/resource.h"
#include "tests/lab/lab_page.h"
#include "tests/lab/lab_test.h"
#include "tests/support/observed_store.h"

namespace pelora::lab {
namespace {

using Lines = std::vector<std::string>;

constexpr RowIndex kArchiverRow = 0;
constexpr RowIndex kImapRow = 1;
constexpr RowIndex kPop3Row = 2;

/// The features tab on users of the domain.
class FeaturesPage {
 public:
  FeaturesPage(testing::HostBench& bench, const std::vector<std::string>& dns)
      : page_(bench, IDD_PROPPAGE_FEATURES, dns) {
    EXPECT_EQ(page_.initialized(), S_OK);
    EXPECT_EQ(page_.opened(), S_OK);
  }

  [[nodiscard]] Lines Rows() {
    Lines rows;
    const IListView& list = page_.dialog().ListView(IDC_FEATURE_LIST);
    for (RowIndex row = 0; row < list.RowCount(); ++row) {
      rows.push_back(list.Text(row, 0) + ": " + list.Text(row, 1));
    }
    return rows;
  }
  void Choose(RowIndex row, ControlId button) {
    EXPECT_EQ(page_.user().ClickListViewCell(IDC_FEATURE_LIST, row, 0, false), UserAnswer::kDone);
    page_.Click(button);
  }
  void DoubleClick(RowIndex row) {
    EXPECT_EQ(page_.user().DoubleClickListViewCell(IDC_FEATURE_LIST, row, 0), UserAnswer::kDone);
  }
  bool Apply() { return page_.Apply(); }

 private:
  LabPage<CPropPageFeatures> page_;
};

class FeaturesTabTest : public ::testing::Test {
 protected:
  FeaturesTabTest() {
    static int number = 0;
    container_ = "OU=Features " + std::to_string(++number) + ",OU=Contract," + Base();
    administrator_.Add(container_, {{"objectClass", {"organizationalUnit"}}});
    administrator_.Add(Dn("One"), {{"objectClass", {"user"}},
                                   {"peloraEnabledFeatures", {"pop3", "mobile", "imap"}},
                                   {"peloraUserArchiveServers", {"arc2", "arc1"}}});
    administrator_.Add(Dn("Two"), {{"objectClass", {"user"}},
                                   {"peloraDisabledFeatures", {"pop3"}},
                                   {"peloraUserArchiveServers", {"arc1", "arc2"}}});
    administrator_.Add(Dn("Three"), {{"objectClass", {"user"}}});
  }

  [[nodiscard]] std::string Dn(const std::string& name) const {
    return "CN=" + name + "," + container_;
  }
  /// What the directory holds of a user.
  [[nodiscard]] Lines Stored(const std::string& name) const {
    return LdapSearch(
        Dn(name), {"peloraEnabledFeatures", "peloraDisabledFeatures", "peloraUserArchiveServers"});
  }
  void AddServer(FeaturesPage& page, const std::string& name) {
    bench_.dialogs.PlayNext([name](HeadlessUser& user) {
      user.TypeText(IDC_ARCHIVER_NAME, name);
      user.Click(IDC_ARCHIVER_ADD);
      user.Click(static_cast<ControlId>(kDialogOk));
    });
    page.DoubleClick(kArchiverRow);
  }

  LabAdministrator administrator_;
  std::string container_;
  std::unique_ptr<NetworkSession> session_ = OpenSession();
  testing::ObservedStore store_{session_->store()};
  ldap::StoreDirectoryService directory_{store_};
  testing::HostBench bench_{directory_};
};

TEST_F(FeaturesTabTest, TwoUsersWhoDifferAreShownAsOneAndWrittenEachByItself) {
  FeaturesPage page(bench_, {Dn("One"), Dn("Two")});
  EXPECT_EQ(page.Rows(), (Lines{"archiver: Enabled on servers 'arc1', 'arc2'", "imap: Enabled",
                                "pop3: Ambiguous"}));
  page.Choose(kImapRow, IDC_FEATURE_DISABLE);
  page.Choose(kPop3Row, IDC_FEATURE_ENABLE);
  AddServer(page, "arc0");
  store_.log.clear();
  EXPECT_TRUE(page.Apply());
  EXPECT_EQ(bench_.Boxes(), "");
  const std::string attributes =
      ": peloraEnabledFeatures peloraDisabledFeatures peloraUserArchiveServers";
  EXPECT_EQ(store_.log,
            (Lines{"read " + Dn("One") + " and 1 more", "modify " + Dn("One") + attributes,
                   "modify " + Dn("Two") + attributes}))
      << "one request reads them all, one writes each";
  const Lines servers = {"peloraUserArchiveServers: arc0", "peloraUserArchiveServers: arc1",
                         "peloraUserArchiveServers: arc2"};
  EXPECT_EQ(Stored("One"),
            (Lines{"peloraDisabledFeatures: imap", "peloraEnabledFeatures: mobile",
                   "peloraEnabledFeatures: pop3", servers[0], servers[1], servers[2]}));
  EXPECT_EQ(Stored("Two"), (Lines{"peloraDisabledFeatures: imap", "peloraEnabledFeatures: pop3",
                                  servers[0], servers[1], servers[2]}));

  FeaturesPage reopened(bench_, {Dn("One"), Dn("Two")});
  EXPECT_EQ(reopened.Rows(), (Lines{"archiver: Enabled on servers 'arc0', 'arc1', 'arc2'",
                                    "imap: Disabled", "pop3: Enabled"}));
}

TEST_F(FeaturesTabTest, AnUntouchedApplySendsNothing) {
  FeaturesPage page(bench_, {Dn("One"), Dn("Two"), Dn("Three")});
  store_.log.clear();
  EXPECT_TRUE(page.Apply());
  EXPECT_EQ(store_.log, Lines{"read " + Dn("One") + " and 2 more"});
}

TEST_F(FeaturesTabTest, WhenTheServerDiesAtTheSecondOfThreeUsersTheNextApplyDoesTheRest) {
  RunningServer server;
  const Lines two = Stored("Two");
  FeaturesPage page(bench_, {Dn("One"), Dn("Two"), Dn("Three")});
  page.Choose(kImapRow, IDC_FEATURE_DISABLE);
  store_.before_modify = [&](std::size_t before) {
    if (before == 1) server.Kill();
  };
  EXPECT_FALSE(page.Apply());
  EXPECT_EQ(bench_.Boxes(), "Unknown error occured||Error code: 0X8007203A\n");
  store_.before_modify = nullptr;
  server.Start();
  EXPECT_EQ(Stored("One").front(), "peloraDisabledFeatures: imap");
  EXPECT_EQ(Stored("Two"), two);
  EXPECT_EQ(Stored("Three"), Lines{});
  EXPECT_EQ(page.Rows()[kImapRow], "imap: Disabled");

  store_.log.clear();
  EXPECT_TRUE(page.Apply());
  const std::string lists = ": peloraEnabledFeatures peloraDisabledFeatures";
  EXPECT_EQ(store_.log, (Lines{"read " + Dn("One") + " and 2 more", "modify " + Dn("Two") + lists,
                               "modify " + Dn("Three") + lists}))
      << "who has it already is left alone";
  EXPECT_EQ(Stored("Two").front(), "peloraDisabledFeatures: imap");
  EXPECT_EQ(Stored("Three"), Lines{"peloraDisabledFeatures: imap"});
}

TEST_F(FeaturesTabTest, WithoutRightsItSaysSoAndWritesNothing) {
  const EnvironmentVariable tickets("KRB5CCNAME", TicketsOf(kHelper));
  const std::unique_ptr<NetworkSession> session = OpenSession();
  testing::HostBench bench(session->service());
  const Lines before = Stored("Two");
  FeaturesPage page(bench, {Dn("Two"), Dn("Three")});
  page.Choose(kPop3Row, IDC_FEATURE_ENABLE);
  EXPECT_FALSE(page.Apply());
  EXPECT_EQ(bench.Boxes(), "Unknown error occured||Error code: 0X80070005\n");
  EXPECT_EQ(Stored("Two"), before);
  EXPECT_EQ(Stored("Three"), Lines{});
}

}  // namespace
}  // namespace pelora::lab
