// SPDX-License-Identifier: Apache-2.0
#include "features/archiver_dlg.h"

#include <gtest/gtest.h>

#include "resources/resource.h"
#include "tests/unit/page_bench.h"

namespace pelora {
namespace {

using Lines = std::vector<std::string>;

class ArchiverDlgTest : public ::testing::Test {
 protected:
  /// Runs the dialog on servers and gives those that it holds in the end.
  StringSet Run(std::int32_t result, StringSet servers, HeadlessModalDialogs::Script script) {
    bench_.dialogs.PlayNext(std::move(script));
    CArchiverDlg dialog(bench_.platform, std::move(servers));
    EXPECT_EQ(dialog.Show(bench_.some_dialog()), result);
    return dialog.servers();
  }
  static Lines Rows(HeadlessUser& user) {
    Lines rows;
    IListBox& list = user.dialog().ListBox(IDC_ARCHIVER_LIST);
    for (RowIndex row = 0; row < list.Count(); ++row) rows.push_back(list.Text(row));
    return rows;
  }
  static std::string Name(HeadlessUser& user) { return user.dialog().Text(IDC_ARCHIVER_NAME); }
  static bool CanAdd(HeadlessUser& user) { return user.dialog().IsEnabled(IDC_ARCHIVER_ADD); }
  static bool CanRemove(HeadlessUser& user) { return user.dialog().IsEnabled(IDC_ARCHIVER_REMOVE); }

  static constexpr ControlId IDOK = 1;
  static constexpr ControlId IDCANCEL = 2;

  testing::PageBench bench_;
};

TEST_F(ArchiverDlgTest, StartsWithTheServersInOrder) {
  Run(kDialogCancel, {"b", "a", "C"}, [](HeadlessUser& user) {
    EXPECT_EQ(Rows(user), (Lines{"C", "a", "b"}));
    EXPECT_EQ(Name(user), "");
    EXPECT_FALSE(CanAdd(user));
    EXPECT_FALSE(CanRemove(user));
    EXPECT_FALSE(user.dialog().ListBox(IDC_ARCHIVER_LIST).Selection());
  });
}

TEST_F(ArchiverDlgTest, ANameIsTypedAndAdded) {
  const StringSet servers = Run(kDialogOk, {"x"}, [](HeadlessUser& user) {
    user.TypeText(IDC_ARCHIVER_NAME, "a");
    EXPECT_TRUE(CanAdd(user));
    user.EraseText(IDC_ARCHIVER_NAME);
    EXPECT_FALSE(CanAdd(user));
    user.TypeText(IDC_ARCHIVER_NAME, "arc1");
    EXPECT_EQ(user.Click(IDC_ARCHIVER_ADD), UserAnswer::kDone);
    EXPECT_EQ(Rows(user), (Lines{"x", "arc1"}));
    EXPECT_EQ(Name(user), "");
    EXPECT_FALSE(CanAdd(user));
    EXPECT_EQ(user.Click(IDC_ARCHIVER_ADD), UserAnswer::kDisabled);
    user.Click(IDOK);
  });
  EXPECT_EQ(servers, (StringSet{"arc1", "x"}));
}

TEST_F(ArchiverDlgTest, AddedServersStandAtTheEndAndMayRepeat) {
  const StringSet servers = Run(kDialogOk, {"m"}, [](HeadlessUser& user) {
    for (const char* name : {"z", "a", "m", "a"}) {
      user.TypeText(IDC_ARCHIVER_NAME, name);
      user.Click(IDC_ARCHIVER_ADD);
    }
    EXPECT_EQ(Rows(user), (Lines{"m", "z", "a", "m", "a"}));
    user.Click(IDOK);
  });
  EXPECT_EQ(servers, (StringSet{"a", "m", "z"}));
}

TEST_F(ArchiverDlgTest, SixtyThreeCharactersOfANameAreRead) {
  const std::string longest = std::string(62, 'n') + "ä";
  const StringSet servers = Run(kDialogOk, {}, [&](HeadlessUser& user) {
    user.TypeText(IDC_ARCHIVER_NAME, longest + "tail");
    user.Click(IDC_ARCHIVER_ADD);
    EXPECT_EQ(Name(user), "");
    user.TypeText(IDC_ARCHIVER_NAME, longest);
    user.Click(IDC_ARCHIVER_ADD);
    EXPECT_EQ(Rows(user), (Lines{longest, longest}));
    user.Click(IDOK);
  });
  EXPECT_EQ(servers, StringSet{longest});
}

TEST_F(ArchiverDlgTest, ACharacterOfTwoUnitsCountsTwiceAndIsNotCutInTwo) {
  const std::string sixty_one(61, 'n');
  EXPECT_EQ(Run(kDialogOk, {},
                [&](HeadlessUser& user) {
                  for (const std::string& name :
                       {sixty_one + "🖥x", sixty_one + "nn🖥", sixty_one + "ö🖥"}) {
                    user.TypeText(IDC_ARCHIVER_NAME, name);
                    user.Click(IDC_ARCHIVER_ADD);
                  }
                  user.Click(IDOK);
                }),
            (StringSet{sixty_one + "🖥", sixty_one + "nn", sixty_one + "ö"}));
}

TEST_F(ArchiverDlgTest, ABlankIsAName) {
  EXPECT_EQ(Run(kDialogOk, {},
                [](HeadlessUser& user) {
                  user.TypeText(IDC_ARCHIVER_NAME, " ");
                  EXPECT_TRUE(CanAdd(user));
                  user.Click(IDC_ARCHIVER_ADD);
                  user.Click(IDOK);
                }),
            StringSet{" "});
}

TEST_F(ArchiverDlgTest, ARemovedServerCanBeCorrectedAndAddedAgain) {
  const StringSet servers = Run(kDialogOk, {"arc1", "arc2"}, [](HeadlessUser& user) {
    user.TypeText(IDC_ARCHIVER_NAME, "half");
    user.SelectListRow(IDC_ARCHIVER_LIST, 0);
    EXPECT_TRUE(CanRemove(user));
    EXPECT_EQ(user.Click(IDC_ARCHIVER_REMOVE), UserAnswer::kDone);
    EXPECT_EQ(Rows(user), Lines{"arc2"});
    EXPECT_EQ(Name(user), "arc1");
    EXPECT_TRUE(CanAdd(user));
    EXPECT_FALSE(CanRemove(user));
    EXPECT_EQ(user.Click(IDC_ARCHIVER_REMOVE), UserAnswer::kDisabled);
    user.TypeText(IDC_ARCHIVER_NAME, "0");
    user.Click(IDC_ARCHIVER_ADD);
    EXPECT_EQ(Rows(user), (Lines{"arc2", "arc10"}));
    user.Click(IDOK);
  });
  EXPECT_EQ(servers, (StringSet{"arc10", "arc2"}));
}

TEST_F(ArchiverDlgTest, ASelectionThatGoesTakesTheButtonAlong) {
  Run(kDialogCancel, {"arc1"}, [](HeadlessUser& user) {
    user.SelectListRow(IDC_ARCHIVER_LIST, 0);
    EXPECT_TRUE(CanRemove(user));
    user.dialog().ListBox(IDC_ARCHIVER_LIST).Select(std::nullopt);
    user.dialog().Notify(IDC_ARCHIVER_LIST, ControlNotification::kSelectionChange);
    EXPECT_FALSE(CanRemove(user));
  });
}

TEST_F(ArchiverDlgTest, ASearchPutsTheServerIntoTheEdit) {
  bench_.directory.AddObject("LDAP://CN=node7,DC=x", {{"cn", Variant::String("node7")}});
  Run(kDialogCancel, {}, [&](HeadlessUser& user) {
    user.TypeText(IDC_ARCHIVER_NAME, "half");
    bench_.choosers.Choose(std::vector<std::string>{"LDAP://CN=node7,DC=x"});
    EXPECT_EQ(user.Click(IDC_ARCHIVER_SEARCH), UserAnswer::kDone);
    EXPECT_EQ(Name(user), "node7");
    EXPECT_TRUE(CanAdd(user));
    EXPECT_TRUE(Rows(user).empty());
    ASSERT_EQ(bench_.choosers.pickers().size(), 1U);
    const testing::FakeChoosers::PickerRun& run = bench_.choosers.pickers().front();
    EXPECT_EQ(run.owner, &user.dialog());
    EXPECT_EQ(run.init.options, 2U) << "one object only";
    EXPECT_EQ(run.init.scope.up_level_both_modes, 0x800U) << "computers";

    // Nothing prepared: the choice is cancelled.
    user.Click(IDC_ARCHIVER_SEARCH);
    EXPECT_EQ(Name(user), "node7");
  });
  EXPECT_EQ(bench_.choosers.pickers().size(), 2U);
}

TEST_F(ArchiverDlgTest, ASearchThatFindsNobodyChangesNothing) {
  Run(kDialogCancel, {}, [&](HeadlessUser& user) {
    user.TypeText(IDC_ARCHIVER_NAME, "half");
    bench_.choosers.Choose(std::vector<std::string>{});
    EXPECT_EQ(user.Click(IDC_ARCHIVER_SEARCH), UserAnswer::kDone);
    EXPECT_EQ(Name(user), "half");
  });
}

TEST_F(ArchiverDlgTest, RemoveWithNothingSelectedDoesNothing) {
  Run(kDialogCancel, {"arc1", "arc2"}, [](HeadlessUser& user) {
    user.TypeText(IDC_ARCHIVER_NAME, "half");
    user.dialog().SetEnabled(IDC_ARCHIVER_REMOVE, true);
    EXPECT_EQ(user.Click(IDC_ARCHIVER_REMOVE), UserAnswer::kDone);
    EXPECT_EQ(Rows(user), (Lines{"arc1", "arc2"}));
    EXPECT_EQ(Name(user), "half");
    EXPECT_TRUE(CanRemove(user)) << "not even the button changes";
  });
}

TEST_F(ArchiverDlgTest, CancelEndsTheDialog) {
  Run(kDialogCancel, {"arc1"}, [](HeadlessUser& user) {
    EXPECT_EQ(user.dialog().Result(), std::nullopt);
    EXPECT_EQ(user.Click(IDCANCEL), UserAnswer::kDone);
    EXPECT_EQ(user.dialog().Result(), kDialogCancel);
  });
}

TEST_F(ArchiverDlgTest, AFailedSearchChangesNothing) {
  bench_.choosers.FailAt(testing::FakeChoosers::Step::kRun, E_ACCESSDENIED);
  Run(kDialogCancel, {}, [](HeadlessUser& user) {
    user.TypeText(IDC_ARCHIVER_NAME, "half");
    user.Click(IDC_ARCHIVER_SEARCH);
    EXPECT_EQ(Name(user), "half");
  });
  EXPECT_TRUE(bench_.messages.records().empty());
}

TEST_F(ArchiverDlgTest, CancelAndCloseKeepTheServersGiven) {
  for (const bool by_button : {true, false}) {
    const StringSet servers = Run(kDialogCancel, {"arc1"}, [=](HeadlessUser& user) {
      user.TypeText(IDC_ARCHIVER_NAME, "arc2");
      user.Click(IDC_ARCHIVER_ADD);
      EXPECT_EQ(by_button ? user.Click(IDCANCEL) : user.CloseWindow(), UserAnswer::kDone);
    });
    EXPECT_EQ(servers, StringSet{"arc1"});
  }
}

TEST_F(ArchiverDlgTest, EnterIsOkAndANameNotAddedIsNoServer) {
  const StringSet servers = Run(kDialogOk, {"arc1"}, [](HeadlessUser& user) {
    user.TypeText(IDC_ARCHIVER_NAME, "arc2");
    EXPECT_EQ(user.PressEnter(), UserAnswer::kDone);
  });
  EXPECT_EQ(servers, StringSet{"arc1"});
}

}  // namespace
}  // namespace pelora
