// SPDX-License-Identifier: Apache-2.0
#include "features/archiver_feature_props.h"

#include <gtest/gtest.h>

#include "tests/unit/features/features_bench.h"

namespace pelora {
namespace {

using testing::FaultPoint;
using testing::kAda;
using testing::kBob;
using testing::kCyd;
using testing::PageBench;
using testing::UserWith;
using Lines = std::vector<std::string>;
using Servers = std::vector<std::string>;

class ArchiverFeaturePropsTest : public ::testing::Test {
 protected:
  /// Adds a user for each list of servers and binds them.
  BoundObjects Bind(const std::vector<Servers>& users) {
    const std::vector<std::string> paths = {kAda, kBob, kCyd};
    for (std::size_t user = 0; user < users.size(); ++user) {
      bench_.directory.AddObject(paths.at(user), UserWith({.servers = users.at(user)}));
    }
    BoundObjects objects;
    const std::span<const std::string> used(paths.data(), users.size());
    EXPECT_EQ(bench_.faulty.BindPaths(used, IID_IADsUser, objects), S_OK);
    bench_.directory.ClearCalls();
    return objects;
  }
  /// Loads the servers of users and gives the status shown, in brackets when it is ambiguous.
  std::string Loaded(const std::vector<Servers>& users) {
    EXPECT_EQ(props_.Load(Bind(users)), S_OK);
    return Status();
  }
  std::string Status() {
    return props_.IsAmbiguous() ? "(" + props_.StatusText() + ")" : props_.StatusText();
  }
  /// Edits: the dialog is expected to show `shown`, and is closed with OK on `wanted`.
  void EditTo(const Lines& shown, const Servers& wanted) {
    bench_.dialogs.PlayNext([=](HeadlessUser& user) {
      EXPECT_EQ(Rows(user), shown);
      while (!Rows(user).empty()) {
        user.SelectListRow(IDC_ARCHIVER_LIST, 0);
        user.Click(IDC_ARCHIVER_REMOVE);
      }
      for (const std::string& server : wanted) {
        user.EraseText(IDC_ARCHIVER_NAME);
        user.TypeText(IDC_ARCHIVER_NAME, server);
        user.Click(IDC_ARCHIVER_ADD);
      }
      EXPECT_EQ(user.Click(IDOK), UserAnswer::kDone);
    });
    EXPECT_EQ(props_.Edit(), S_OK);
    EXPECT_EQ(bench_.dialogs.ScriptsLeft(), 0U);
  }
  static Lines Rows(HeadlessUser& user) {
    Lines rows;
    IListBox& list = user.dialog().ListBox(IDC_ARCHIVER_LIST);
    for (RowIndex row = 0; row < list.Count(); ++row) rows.push_back(list.Text(row));
    return rows;
  }
  /// What a save stages on users that have these servers.
  Lines Saved(const std::vector<Servers>& users) {
    const BoundObjects objects = Bind(users);
    EXPECT_EQ(props_.Save(objects), S_OK);
    return bench_.Writes();
  }

  static constexpr ControlId IDOK = 1;
  static constexpr ControlId IDCANCEL = 2;

  PageBench bench_;
  ArchiverFeatureProps props_{bench_.platform};
};

// Loading and the status.

TEST_F(ArchiverFeaturePropsTest, TheStatusNamesTheServers) {
  EXPECT_EQ(Loaded({{}}), "Disabled");
  EXPECT_EQ(ArchiverFeatureProps(bench_.platform).StatusText(), "Disabled");
  ArchiverFeatureProps one(bench_.platform);
  EXPECT_EQ(one.Load(Bind({{"arc1"}})), S_OK);
  EXPECT_EQ(one.StatusText(), "Enabled on server 'arc1'");
  ArchiverFeatureProps two(bench_.platform);
  EXPECT_EQ(two.Load(Bind({{"arc2", "arc1"}})), S_OK);
  EXPECT_EQ(two.StatusText(), "Enabled on servers 'arc1', 'arc2'");
  ArchiverFeatureProps three(bench_.platform);
  EXPECT_EQ(three.Load(Bind({{"b", "C", "a"}})), S_OK);
  EXPECT_EQ(three.StatusText(), "Enabled on servers 'C', 'a', 'b'");
  EXPECT_FALSE(three.IsModified());
}

TEST_F(ArchiverFeaturePropsTest, TheStatusTextIsTheObjectsOwnUntilTheNextRequest) {
  EXPECT_EQ(props_.Load(Bind({{"arc1"}})), S_OK);
  const std::string& first = props_.StatusText();
  const std::string& second = props_.StatusText();
  EXPECT_EQ(&first, &second);
  EXPECT_EQ(first, "Enabled on server 'arc1'");
}

TEST_F(ArchiverFeaturePropsTest, NoUserIsNoServer) {
  EXPECT_EQ(Loaded({}), "Disabled");
  EXPECT_EQ(bench_.directory.calls().size(), 0U);
}

TEST_F(ArchiverFeaturePropsTest, UsersWithTheSameServersInAnyOrderAgree) {
  EXPECT_EQ(Loaded({{"arc2", "arc1"}, {"arc1", "arc2"}, {"arc2", "arc1"}}),
            "Enabled on servers 'arc1', 'arc2'");
}

TEST_F(ArchiverFeaturePropsTest, UsersWithoutServersAgree) {
  EXPECT_EQ(Loaded({{}, {}}), "Disabled");
}

TEST_F(ArchiverFeaturePropsTest, UsersWithOtherServersDisagree) {
  EXPECT_EQ(Loaded({{"arc1"}, {"arc2"}}), "(Ambiguous)");
  EXPECT_FALSE(props_.IsModified());
}

TEST_F(ArchiverFeaturePropsTest, AUserWithoutServersDisagreesWithOneWhoHasSome) {
  EXPECT_EQ(Loaded({{}, {"arc1"}}), "(Ambiguous)");
}

TEST_F(ArchiverFeaturePropsTest, TheCaseOfAServersNameCounts) {
  EXPECT_EQ(Loaded({{"arc1"}, {"ARC1"}}), "(Ambiguous)");
}

TEST_F(ArchiverFeaturePropsTest, LoadingStopsAtTheFirstUserWhoDisagrees) {
  bench_.faulty.plan().Fail(FaultPoint::kGet, 3, E_ACCESSDENIED);
  EXPECT_EQ(Loaded({{"arc1"}, {}, {"arc1"}}), "(Ambiguous)");
  EXPECT_EQ(bench_.directory.calls().size(), 2U);
}

TEST_F(ArchiverFeaturePropsTest, AFailedReadingIsReturned) {
  for (std::size_t user = 1; user <= 2; ++user) {
    const BoundObjects objects = Bind({{"arc1"}, {"arc1"}});
    bench_.faulty.plan().Fail(FaultPoint::kGet, user, E_ACCESSDENIED);
    EXPECT_EQ(ArchiverFeatureProps(bench_.platform).Load(objects), E_ACCESSDENIED);
  }
}

// Editing.

TEST_F(ArchiverFeaturePropsTest, AnEditChangesTheServers) {
  EXPECT_EQ(Loaded({{"arc1"}}), "Enabled on server 'arc1'");
  EditTo({"arc1"}, {"arc2", "arc1"});
  EXPECT_EQ(Status(), "Enabled on servers 'arc1', 'arc2'");
  EXPECT_TRUE(props_.IsModified());
  EXPECT_TRUE(bench_.messages.records().empty());
  ASSERT_EQ(bench_.dialogs.records().size(), 1U);
  EXPECT_EQ(bench_.dialogs.records().front().dialog, 229);
  EXPECT_EQ(bench_.dialogs.records().front().owner, nullptr) << "owned by the active window";
  EditTo({"arc1", "arc2"}, {});
  EXPECT_EQ(Status(), "Disabled");
}

TEST_F(ArchiverFeaturePropsTest, AnEditToTheSameServersIsNone) {
  EXPECT_EQ(Loaded({{"arc1", "arc2"}}), "Enabled on servers 'arc1', 'arc2'");
  EditTo({"arc1", "arc2"}, {"arc2", "arc1", "arc2"});
  EXPECT_FALSE(props_.IsModified());
  EXPECT_EQ(Status(), "Enabled on servers 'arc1', 'arc2'");
}

TEST_F(ArchiverFeaturePropsTest, ACancelledEditIsNone) {
  EXPECT_EQ(Loaded({{"arc1"}}), "Enabled on server 'arc1'");
  bench_.dialogs.PlayNext([](HeadlessUser& user) {
    user.SelectListRow(IDC_ARCHIVER_LIST, 0);
    user.Click(IDC_ARCHIVER_REMOVE);
    EXPECT_EQ(user.Click(IDCANCEL), UserAnswer::kDone);
  });
  EXPECT_EQ(props_.Edit(), S_OK);
  EXPECT_FALSE(props_.IsModified());
  EXPECT_EQ(Status(), "Enabled on server 'arc1'");
}

TEST_F(ArchiverFeaturePropsTest, DisagreeingUsersAreReplacedOnlyAfterAQuestion) {
  EXPECT_EQ(Loaded({{"arc1"}, {"arc2"}}), "(Ambiguous)");
  bench_.messages.AnswerNext(kDialogNo);
  EXPECT_EQ(props_.Edit(), S_OK);
  EXPECT_TRUE(bench_.dialogs.records().empty());
  EXPECT_EQ(Status(), "(Ambiguous)");
  ASSERT_EQ(bench_.messages.records().size(), 1U);
  const HeadlessMessageBox::Record& box = bench_.messages.records().front();
  EXPECT_EQ(box.message.text,
            "This will clear the settings for all selected objects. Do you wish to continue?");
  EXPECT_EQ(box.message.caption, "Warning");
  EXPECT_EQ(box.message.buttons, MessageButtons::kYesNo);
  EXPECT_EQ(box.owner, nullptr) << "owned by the active window";

  bench_.messages.AnswerNext(kDialogYes);
  EditTo({}, {"arc3"});
  EXPECT_EQ(Status(), "Enabled on server 'arc3'");
  EXPECT_TRUE(props_.IsModified());
  // They agree now: nothing is asked any more.
  EditTo({"arc3"}, {"arc4"});
  EXPECT_EQ(bench_.messages.records().size(), 2U);
}

TEST_F(ArchiverFeaturePropsTest, AnyAnswerButYesEndsTheEdit) {
  EXPECT_EQ(Loaded({{"arc1"}, {"arc2"}}), "(Ambiguous)");
  for (const std::int32_t answer : {kDialogNo, kDialogCancel, kDialogOk, 0, -1}) {
    bench_.messages.AnswerNext(answer);
    EXPECT_EQ(props_.Edit(), S_OK);
  }
  EXPECT_TRUE(bench_.dialogs.records().empty());
}

TEST_F(ArchiverFeaturePropsTest, DisagreeingUsersStayAsTheyAreWhenNothingWasEntered) {
  EXPECT_EQ(Loaded({{"arc1"}, {"arc2"}}), "(Ambiguous)");
  bench_.messages.AnswerNext(kDialogYes);
  EditTo({}, {});
  EXPECT_EQ(Status(), "(Ambiguous)");
  EXPECT_FALSE(props_.IsModified());
}

TEST_F(ArchiverFeaturePropsTest, ADialogThatCannotBeMadeIsAFailure) {
  const resources::ResourceFile none;
  HeadlessModalDialogs no_dialogs(none);
  const Platform platform{bench_.faulty,   bench_.messages, no_dialogs,
                          bench_.choosers, bench_.text,     bench_.library};
  ArchiverFeatureProps props(platform);
  EXPECT_EQ(props.Edit(), E_FAIL);
  EXPECT_FALSE(props.IsModified());
}

// Saving.

TEST_F(ArchiverFeaturePropsTest, ASaveReplacesTheServersOfEveryUser) {
  EXPECT_EQ(Loaded({{"arc1"}}), "Enabled on server 'arc1'");
  EXPECT_EQ(Saved({{}, {"arc2", "arc3"}}),
            (Lines{"Put LDAP://CN=Ada,DC=x peloraUserArchiveServers \"arc1\"",
                   "Put LDAP://CN=Bob,DC=x peloraUserArchiveServers \"arc1\""}));
  EditTo({"arc1"}, {"b", "a"});
  EXPECT_EQ(Saved({{}}), Lines{"Put LDAP://CN=Ada,DC=x peloraUserArchiveServers [\"a\", \"b\"]"});
  EditTo({"a", "b"}, {});
  EXPECT_EQ(Saved({{"arc2"}, {}}),
            (Lines{"PutEx CLEAR LDAP://CN=Ada,DC=x peloraUserArchiveServers nothing",
                   "PutEx CLEAR LDAP://CN=Bob,DC=x peloraUserArchiveServers nothing"}));
  EXPECT_TRUE(props_.IsModified()) << "a save is no end of the change";
}

TEST_F(ArchiverFeaturePropsTest, ASaveStopsAtTheFirstFailure) {
  EXPECT_EQ(Loaded({{"arc1"}}), "Enabled on server 'arc1'");
  const BoundObjects objects = Bind({{}, {}, {}});
  bench_.faulty.plan().Fail(FaultPoint::kPut, 2, E_ACCESSDENIED);
  EXPECT_EQ(props_.Save(objects), E_ACCESSDENIED);
  EXPECT_EQ(bench_.Writes(), Lines{"Put LDAP://CN=Ada,DC=x peloraUserArchiveServers \"arc1\""});
  EXPECT_TRUE(bench_.messages.records().empty());
}

}  // namespace
}  // namespace pelora
