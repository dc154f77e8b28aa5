// SPDX-License-Identifier: Apache-2.0
// The features tab in a property sheet of the system's: what its list tells the page and is told by
// it, how it is drawn, and every call that an apply makes.
#include <gtest/gtest.h>

#include "hosts/windows/dialogs/win32_dialog.h"
#include "platform/dialog_controller.h"
#include "resources/resource.h"
#include "tests/windows/extension/console.h"
#include "tests/windows/extension/extension_test.h"
#include "tests/windows/extension/page_layout.h"
#include "tests/windows/support/drawn_cells.h"
#include "tests/windows/support/message_box_reader.h"
#include "tests/windows/support/screenshot.h"
#include "tests/windows/support/window_text.h"

namespace pelora::windows::test {
namespace {

using pelora::testing::FakeAttributes;
using pelora::testing::FaultPoint;
using Lines = std::vector<std::string>;

const std::string kAda = "LDAP://dc1/CN=Ada,OU=Größe,DC=fake,DC=example";
const std::string kBob = "LDAP://dc1/CN=Bob,OU=Größe,DC=fake,DC=example";
constexpr RowIndex kArchiverRow = 0;
constexpr RowIndex kImapRow = 1;
constexpr RowIndex kPop3Row = 2;
constexpr COLORREF kGrey = RGB(192, 192, 192);

class FeaturesTabTest : public ExtensionTest {
 protected:
  ~FeaturesTabTest() override {
    console_.Close();
    EXPECT_EQ(boxes_.boxes().size(), expected_boxes_);
    EXPECT_EQ(console_.directory().live_objects(), 0U);
    EXPECT_EQ(console_.selection().references(), 0U);
    EXPECT_EQ(CanUnloadNow(), S_OK);
  }

  /// Opens the tab on two users: imap is enabled, pop3 is ambiguous, the archive servers are those.
  void OpenTwo(const char* server_of_ada = "arc1", const char* server_of_bob = "arc1") {
    console_.directory().AddObject(
        kAda, {{"peloraEnabledFeatures", Variant::StringArray({"imap", "pop3"})},
               {"peloraUserArchiveServers", Variant::String(server_of_ada)}});
    console_.directory().AddObject(kBob,
                                   {{"peloraDisabledFeatures", Variant::String("pop3")},
                                    {"peloraUserArchiveServers", Variant::String(server_of_bob)}});
    Open({kAda, kBob});
  }
  void OpenOne(FakeAttributes attributes = {}) {
    console_.directory().AddObject(kAda, std::move(attributes));
    Open({kAda});
  }
  void Open(const std::vector<std::string>& paths) {
    console_.Select(paths);
    ASSERT_TRUE(console_.Open("CPropPageFeatures"));
    boxes_.Ignore(console_.sheet().window());
    console_.directory().ClearCalls();
  }

  Win32Dialog Page() { return {console_.sheet().Page(), DialogRole::kPage}; }
  ControlWindow View() { return {console_.sheet().Page(), IDC_FEATURE_LIST}; }
  Lines Rows() {
    Lines rows;
    Win32Dialog page = Page();
    const IListView& list = page.ListView(IDC_FEATURE_LIST);
    for (RowIndex row = 0; row < list.RowCount(); ++row) {
      rows.push_back(list.Text(row, 0) + ": " + list.Text(row, 1));
    }
    return rows;
  }
  std::string Buttons() {
    Win32Dialog page = Page();
    std::string enabled;
    for (const ControlId id : {IDC_FEATURE_PROPERTIES, IDC_FEATURE_ENABLE, IDC_FEATURE_DISABLE}) {
      if (page.IsEnabled(id)) enabled += (enabled.empty() ? "" : " ") + page.Text(id);
    }
    return enabled.empty() ? "none" : enabled;
  }
  void ClickRow(RowIndex row, bool add = false) {
    console_.User().ClickListViewCell(IDC_FEATURE_LIST, row, 1, add);
  }
  void DoubleClickRow(RowIndex row) {
    console_.User().DoubleClickListViewCell(IDC_FEATURE_LIST, row, 1);
  }
  void PressKey(WPARAM key) {
    View().Send(WM_KEYDOWN, key, 1);
    View().Send(WM_KEYUP, key, 1);
  }
  std::optional<COLORREF> TextColor(RowIndex row, std::size_t column) {
    return DrawnTextColor(console_.sheet().Page(), View().window(), row, column);
  }
  /// Has the servers' dialog dealt with while `open` opens it.
  void WithServerDialog(const std::function<void(HWND)>& play, const std::function<void()>& open) {
    bool was_played = false;
    ModalWatcher watcher([&](HWND dialog) {
      if (GetDlgItem(dialog, IDC_ARCHIVER_LIST) == nullptr) return;
      was_played = true;
      play(dialog);
    });
    boxes_.Pause();
    open();
    boxes_.Resume();
    EXPECT_TRUE(was_played);
  }

  Console console_;
  MessageBoxReader boxes_;
  std::size_t expected_boxes_ = 0;
};

// What it shows.

TEST_F(FeaturesTabTest, ListsTheFeaturesInTwoColumnsOfHalfTheWidth) {
  OpenTwo();
  EXPECT_EQ(console_.sheet().TabText(0), "Pelora Features");
  EXPECT_EQ(Rows(),
            (Lines{"archiver: Enabled on server 'arc1'", "imap: Enabled", "pop3: Ambiguous"}));
  EXPECT_EQ(Buttons(), "none");
  EXPECT_FALSE(console_.sheet().IsApplyEnabled());
  const int width = Page().ClientWidth(IDC_FEATURE_LIST);
  EXPECT_EQ(console_.User().ColumnWidth(IDC_FEATURE_LIST, 0), width / 2);
  EXPECT_EQ(console_.User().ColumnWidth(IDC_FEATURE_LIST, 1), width / 2);
  EXPECT_EQ(View().Style() & (WS_HSCROLL | WS_VSCROLL), 0U);
  const DWORD wanted = LVS_REPORT | LVS_SHOWSELALWAYS | LVS_NOSORTHEADER;
  EXPECT_EQ(View().Style() & wanted, wanted);
  EXPECT_NE(View().Send(LVM_GETEXTENDEDLISTVIEWSTYLE).value_or(0) & LVS_EX_FULLROWSELECT, 0);
}

TEST_F(FeaturesTabTest, NothingIsClipped) {
  OpenTwo("arc1", "arc2");
  SavePicture(console_.sheet().window(), "features_tab");
  EXPECT_EQ(ClippedControls(console_.sheet().Page()), Lines{});
}

TEST_F(FeaturesTabTest, ItsTitleStandsInTheStringTable) {
  OpenOne();
  std::array<wchar_t, 64> text{};
  EXPECT_GT(LoadStringW(GetModuleHandleW(L"PeloraADS.DLL"), IDS_PROPPAGE_FEATURES, text.data(),
                        static_cast<int>(text.size())),
            0);
  EXPECT_EQ(std::wstring(text.data()), L"Pelora Features");
}

TEST_F(FeaturesTabTest, AnOpenStatusIsDrawnGreyUntilItIsChosen) {
  OpenTwo("arc1", "arc2");
  const COLORREF text = GetSysColor(COLOR_WINDOWTEXT);
  for (const RowIndex row : {kArchiverRow, kImapRow, kPop3Row}) {
    EXPECT_EQ(TextColor(row, 0), text) << "the name of row " << row;
  }
  EXPECT_EQ(TextColor(kArchiverRow, 1), kGrey);
  EXPECT_EQ(TextColor(kImapRow, 1), text);
  EXPECT_EQ(TextColor(kPop3Row, 1), kGrey);
  ClickRow(kPop3Row);
  console_.User().Click(IDC_FEATURE_ENABLE);
  EXPECT_EQ(TextColor(kPop3Row, 1), text);
  SavePicture(console_.sheet().window(), "features_tab_chosen");
}

TEST_F(FeaturesTabTest, AnUnsetStatusIsDrawnGrey) {
  OpenOne();
  EXPECT_EQ(Rows(), (Lines{"archiver: Disabled", "imap: Unset", "pop3: Unset"}));
  EXPECT_EQ(TextColor(kArchiverRow, 1), GetSysColor(COLOR_WINDOWTEXT));
  EXPECT_EQ(TextColor(kImapRow, 1), kGrey);
  DoubleClickRow(kImapRow);
  EXPECT_EQ(TextColor(kImapRow, 1), GetSysColor(COLOR_WINDOWTEXT));
}

// The selection.

TEST_F(FeaturesTabTest, TheButtonsFollowMouseKeysAndPrograms) {
  OpenTwo();
  ClickRow(kImapRow);
  EXPECT_EQ(Buttons(), "Disable");
  ClickRow(kPop3Row, true);
  EXPECT_EQ(Buttons(), "Enable Disable");
  ClickRow(kArchiverRow);
  EXPECT_EQ(Buttons(), "Properties");
  ClickRow(kImapRow, true);
  EXPECT_EQ(Buttons(), "none");
  ClickRow(3);
  EXPECT_EQ(Buttons(), "none");
  PressKey(VK_HOME);
  EXPECT_EQ(Buttons(), "Properties");
  PressKey(VK_DOWN);
  EXPECT_EQ(Buttons(), "Disable");
  Win32Dialog page = Page();
  IListView& list = page.ListView(IDC_FEATURE_LIST);
  list.SetSelected(kPop3Row, true);
  EXPECT_EQ(Buttons(), "Enable Disable");
  list.SetSelected(kImapRow, false);
  list.SetSelected(kPop3Row, false);
  EXPECT_EQ(Buttons(), "none");
}

TEST_F(FeaturesTabTest, AllRowsMayBeSelectedInOneMessage) {
  OpenTwo();
  LVITEMW every = {};
  every.stateMask = LVIS_SELECTED;
  every.state = LVIS_SELECTED;
  constexpr WPARAM kEveryRow = static_cast<WPARAM>(-1);
  View().Send(LVM_SETITEMSTATE, kEveryRow, reinterpret_cast<LPARAM>(&every));
  EXPECT_EQ(Buttons(), "none") << "the archiver is among them";
  Page().ListView(IDC_FEATURE_LIST).SetSelected(kArchiverRow, false);
  EXPECT_EQ(Buttons(), "Enable Disable");
  every.state = 0;
  View().Send(LVM_SETITEMSTATE, kEveryRow, reinterpret_cast<LPARAM>(&every));
  EXPECT_EQ(Buttons(), "none");
}

TEST_F(FeaturesTabTest, TheKeyboardIsNotLostOnAButtonThatGoesOff) {
  OpenTwo();
  ClickRow(kImapRow);
  const ControlWindow disable(console_.sheet().Page(), IDC_FEATURE_DISABLE);
  SetFocus(disable.window());
  ASSERT_EQ(GetFocus(), disable.window());
  console_.User().Click(IDC_FEATURE_DISABLE);
  EXPECT_EQ(Buttons(), "Enable");
  const HWND focus = GetFocus();
  EXPECT_NE(focus, disable.window());
  EXPECT_NE(IsChild(console_.sheet().Page(), focus), FALSE);
  EXPECT_NE(IsWindowEnabled(focus), FALSE);
}

// Choices and what they write.

TEST_F(FeaturesTabTest, AnApplyMakesExactlyTheseCalls) {
  OpenTwo();
  ClickRow(kPop3Row);
  console_.User().Click(IDC_FEATURE_ENABLE);
  EXPECT_TRUE(console_.sheet().IsApplyEnabled());
  console_.sheet().ClickApply();
  EXPECT_EQ(
      console_.directory().Log(),
      (Lines{"ADsOpenObject " + kAda + " 1", "ADsOpenObject " + kBob + " 1",
             "Get " + kAda + " peloraEnabledFeatures", "Get " + kAda + " peloraDisabledFeatures",
             "Get " + kBob + " peloraEnabledFeatures", "Get " + kBob + " peloraDisabledFeatures",
             "Put " + kBob + " peloraEnabledFeatures \"pop3\"",
             "PutEx CLEAR " + kBob + " peloraDisabledFeatures nothing", "SetInfo " + kAda,
             "SetInfo " + kBob}));
  EXPECT_EQ(console_.sheet().AnswersTo(PSN_APPLY), std::vector<LRESULT>{PSNRET_NOERROR});
  EXPECT_FALSE(console_.sheet().IsApplyEnabled());
  EXPECT_EQ(console_.directory().Value(kBob, "peloraEnabledFeatures"), Variant::String("pop3"));
  EXPECT_TRUE(console_.directory().Value(kBob, "peloraDisabledFeatures").IsEmpty());
}

TEST_F(FeaturesTabTest, ADoubleClickTogglesAndOkWritesItThoughThePageIsNotModified) {
  OpenTwo();
  DoubleClickRow(kImapRow);
  EXPECT_EQ(Rows()[kImapRow], "imap: Disabled");
  EXPECT_EQ(Buttons(), "Enable");
  DoubleClickRow(3);
  console_.User().RightDoubleClickListViewCell(IDC_FEATURE_LIST, kPop3Row, 0);
  EXPECT_EQ(Rows()[kPop3Row], "pop3: Ambiguous");
  EXPECT_FALSE(console_.sheet().IsApplyEnabled());
  console_.sheet().ClickOk();
  EXPECT_FALSE(console_.sheet().IsOpen());
  EXPECT_EQ(console_.directory().Value(kAda, "peloraEnabledFeatures"), Variant::String("pop3"));
  EXPECT_EQ(console_.directory().Value(kAda, "peloraDisabledFeatures"), Variant::String("imap"));
  EXPECT_EQ(console_.directory().Value(kBob, "peloraDisabledFeatures"),
            Variant::StringArray({"imap", "pop3"}));
}

TEST_F(FeaturesTabTest, ArchiveServersAreEditedInTheirDialog) {
  OpenTwo();
  ClickRow(kArchiverRow);
  WithServerDialog(
      [](HWND dialog) {
        WindowPlayer user(dialog);
        Win32Dialog controls(dialog, DialogRole::kModal);
        EXPECT_EQ(controls.ListBox(IDC_ARCHIVER_LIST).Count(), 1U);
        EXPECT_FALSE(controls.IsEnabled(IDC_ARCHIVER_ADD));
        user.ClickListRow(IDC_ARCHIVER_LIST, 0);
        EXPECT_TRUE(controls.IsEnabled(IDC_ARCHIVER_REMOVE));
        user.Click(IDC_ARCHIVER_REMOVE);
        EXPECT_EQ(controls.Text(IDC_ARCHIVER_NAME), "arc1");
        EXPECT_FALSE(controls.IsEnabled(IDC_ARCHIVER_REMOVE));
        EXPECT_TRUE(controls.IsEnabled(IDC_ARCHIVER_ADD));
        user.Type(IDC_ARCHIVER_NAME, "-größe");
        user.Click(IDC_ARCHIVER_ADD);
        user.Type(IDC_ARCHIVER_NAME, std::string(62, 'x') + "äy");
        user.Click(IDC_ARCHIVER_ADD);
        SavePicture(dialog, "archive_servers");
        EXPECT_EQ(ClippedControls(dialog), Lines{});
        user.Click(static_cast<ControlId>(kDialogOk));
      },
      [this] { console_.User().Click(IDC_FEATURE_PROPERTIES); });
  const std::string longest = std::string(62, 'x') + "ä";
  EXPECT_EQ(Rows()[kArchiverRow], "archiver: Enabled on servers 'arc1-größe', '" + longest + "'");
  EXPECT_FALSE(console_.sheet().IsApplyEnabled());
  console_.sheet().ClickOk();
  EXPECT_EQ(console_.directory().Value(kBob, "peloraUserArchiveServers"),
            Variant::StringArray({"arc1-größe", longest}));
}

TEST_F(FeaturesTabTest, UsersThatDisagreeAreReplacedAfterAQuestion) {
  OpenTwo("arc1", "arc2");
  Lines question;
  const auto edit = [&](int answer) {
    ModalWatcher answerer([&](HWND box) {
      if (GetDlgItem(box, answer) == nullptr || GetDlgItem(box, IDYES) == nullptr) return;
      constexpr int kTextOfBox = 0xFFFF;
      question = {TextOfWindow(box), TextOfWindow(GetDlgItem(box, kTextOfBox))};
      SendMessageW(box, WM_COMMAND, MAKEWPARAM(answer, BN_CLICKED), 0);
    });
    DoubleClickRow(kArchiverRow);
  };
  boxes_.Pause();
  edit(IDNO);
  boxes_.Resume();
  EXPECT_EQ(question, (Lines{"Warning",
                             "This will clear the settings for all selected objects. Do you wish "
                             "to continue?"}));
  EXPECT_EQ(Rows()[kArchiverRow], "archiver: Ambiguous");
  WithServerDialog(
      [](HWND dialog) {
        WindowPlayer user(dialog);
        user.Type(IDC_ARCHIVER_NAME, "arc3");
        user.Click(IDC_ARCHIVER_ADD);
        user.Click(static_cast<ControlId>(kDialogOk));
      },
      [&] { edit(IDYES); });
  EXPECT_EQ(Rows()[kArchiverRow], "archiver: Enabled on server 'arc3'");
}

TEST_F(FeaturesTabTest, AFailureOnTheSecondUserIsShownAndTheRetrySucceeds) {
  OpenTwo();
  expected_boxes_ = 2;
  ClickRow(kImapRow);
  console_.User().Click(IDC_FEATURE_DISABLE);
  console_.plan().FailAttribute(FaultPoint::kPut, "peloraDisabledFeatures", 2, E_ACCESSDENIED);
  console_.sheet().ClickApply();
  ASSERT_EQ(boxes_.boxes().size(), 1U);
  EXPECT_EQ(boxes_.boxes()[0].caption, "Pelora Error");
  EXPECT_EQ(boxes_.boxes()[0].text, "Failed to update object: \r\n\r\nError code: 0X80070005");
  EXPECT_TRUE(console_.sheet().IsApplyEnabled());
  EXPECT_TRUE(console_.directory().Value(kAda, "peloraDisabledFeatures").IsEmpty());

  console_.plan().Fail(FaultPoint::kSetInfo, 2, E_ACCESSDENIED);
  console_.sheet().ClickApply();
  ASSERT_EQ(boxes_.boxes().size(), 2U);
  EXPECT_EQ(boxes_.boxes()[1].text, "Unknown error occured\r\n\r\nError code: 0X80070005");
  EXPECT_EQ(console_.directory().Value(kAda, "peloraDisabledFeatures"), Variant::String("imap"));
  EXPECT_EQ(console_.directory().Value(kBob, "peloraDisabledFeatures"), Variant::String("pop3"));

  console_.sheet().ClickApply();
  EXPECT_EQ(console_.directory().Value(kBob, "peloraDisabledFeatures"),
            Variant::StringArray({"imap", "pop3"}));
  EXPECT_EQ(console_.sheet().AnswersTo(PSN_APPLY),
            (std::vector<LRESULT>{PSNRET_INVALID_NOCHANGEPAGE, PSNRET_INVALID_NOCHANGEPAGE,
                                  PSNRET_NOERROR}));
  EXPECT_FALSE(console_.sheet().IsApplyEnabled());
}

TEST_F(FeaturesTabTest, AUserThatCannotBeBoundIsReported) {
  console_.directory().AddObject(kAda, {});
  console_.Select({kAda});
  // The first binding is the test of the connection.
  console_.FailBinding(2, kNoSuchObject);
  ASSERT_TRUE(console_.Open("CPropPageFeatures"));
  boxes_.Ignore(console_.sheet().window());
  expected_boxes_ = 1;
  ASSERT_EQ(boxes_.boxes().size(), 1U);
  EXPECT_EQ(boxes_.boxes()[0].text,
            "Unable to get connection with the ldap user.\r\n\r\nError code: 0X80072030");
  EXPECT_EQ(Rows(), Lines{});
}

}  // namespace
}  // namespace pelora::windows::test
